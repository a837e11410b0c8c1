#pragma once

#include <QWidget>

#include <vector>

class QLabel;
class QToolButton;
class zoHPCElidedLabel;
class zoHPCProblem;

// What the status bar of the cluster window says all the time: the open file, whether the document differs
// from it, and what the document holds.
class zoHPCStatusPane final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCStatusPane(QWidget* parent = nullptr);

    // Absolute path; empty for a document in no file.
    void setFile(const QString& path);
    void setDiffers(bool differs);
    void setCounts(int nodes, int displays);
    void setProblems(const std::vector<zoHPCProblem>& problems);
    // Gives room to a message that shows beside the pane: the file's name becomes short.
    void setCompact(bool compact);

signals:
    void problemsClicked();

private:
    zoHPCElidedLabel* m_file = nullptr;
    QLabel* m_changed = nullptr;
    QLabel* m_nodes = nullptr;
    QLabel* m_displays = nullptr;
    QToolButton* m_problems = nullptr;
};
