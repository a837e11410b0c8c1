#pragma once

#include <QModelIndex>
#include <QObject>
#include <QString>

class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;

// The panel of a projection: its fields edit the columns of one row, and those are shown that its type has.
class zoHPCProjectionPanel final : public QObject
{
    Q_OBJECT

public:
    // The dialog's form, set up; not owned.
    explicit zoHPCProjectionPanel(const Ui_zoHPCDisplayGUII& form, QObject* parent = nullptr);
    ~zoHPCProjectionPanel() override;

    // The word of the type that is chosen; empty when the list does not have it.
    QString chosenType() const;

    // The row to edit. A generated one can only be read.
    void setRow(const QModelIndex& row, bool isGenerated);
    // What the chosen type has.
    void showParameters();
    void focusName();

private:
    void fillTypes();
    void mapFields();
    void setReadOnly(bool isReadOnly);

    const Ui_zoHPCDisplayGUII& m_ui;
    QZODataWidgetMapper* m_mapper = nullptr;
};
