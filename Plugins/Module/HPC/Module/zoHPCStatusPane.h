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
    // Leaves this many pixels of the status bar to a message, as long as it shows: the file's name becomes
    // short, then parts give way. 0 ends it.
    void giveRoom(int width);

signals:
    void problemsClicked();

private:
    void arrange();

    zoHPCElidedLabel* m_file = nullptr;
    QLabel* m_changed = nullptr;
    QLabel* m_nodes = nullptr;
    QLabel* m_displays = nullptr;
    QToolButton* m_problems = nullptr;
    int m_room = 0;
    bool m_differs = false;
};
