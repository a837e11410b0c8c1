#pragma once

#include <QString>
#include <QVariant>
#include <QWidget>

#include <optional>
#include <vector>

class QAbstractItemModel;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class zoHPCViewportItem;
class zoHPCWindowItem;

// The panel of several rows of the output tree: what their windows and viewports have in common, and fields that set it
// for all of them. A field in which they differ is empty.
class zoHPCSeveralPanel final : public QWidget
{
    Q_OBJECT

public:
    // Nodes to choose from; not owned.
    explicit zoHPCSeveralPanel(QAbstractItemModel* nodes, QWidget* parent = nullptr);
    ~zoHPCSeveralPanel() override;

    // What is selected; items are not kept.
    void show(const std::vector<zoHPCWindowItem*>& windows, const std::vector<zoHPCViewportItem*>& viewports);
    void setCanDuplicate(bool can);
    // The others follow in the order of tabs.
    QWidget* firstField() const;

signals:
    // A person set a column of all windows, or of all viewports.
    void windowsChanged(int column, const QVariant& value);
    void viewportsChanged(int column, const QVariant& value);
    // All windows, from this node on.
    void nodesChosen(const QString& first);
    void duplicateClicked();

private:
    struct Number
    {
        QLineEdit* field;
        int column;
        QString common; // of all windows; empty where they differ
    };

    QGroupBox* createWindows(QAbstractItemModel* nodes);
    QGroupBox* createViewports();
    QLineEdit* addNumber(int column, const QString& name);
    static std::optional<int> valueOf(int column, const QString& text);

    QLabel* m_summary;
    QComboBox* m_nodes;
    QComboBox* m_screen;
    QCheckBox* m_fullScreen;
    QComboBox* m_stereo;
    QGroupBox* m_viewportGroup;
    QPushButton* m_duplicate;
    std::vector<Number> m_numbers;
};
