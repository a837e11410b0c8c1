#pragma once

#include <QCommandLinkButton>

// A command link that shows when it has the focus, which styles leave out while it is flat, and takes Return then, as
// buttons of dialogs do.
class zoHostLinkButton final : public QCommandLinkButton
{
    Q_OBJECT

public:
    zoHostLinkButton(const QString& text, const QString& description, QWidget* parent = nullptr);
    ~zoHostLinkButton() override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
