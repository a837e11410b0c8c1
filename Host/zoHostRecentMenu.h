#pragma once

#include <QMenu>

class zoHostRecentFiles;

// The menu of the files that were opened last.
class zoHostRecentMenu final : public QMenu
{
    Q_OBJECT

public:
    explicit zoHostRecentMenu(zoHostRecentFiles* files, QWidget* parent = nullptr); // files not owned
    ~zoHostRecentMenu() override;

    // Whether files may be opened; the list can be cleared all the same.
    void setOpenEnabled(bool enabled);

signals:
    // Emitted once the menu has closed.
    void fileChosen(const QString& fileName);

private:
    void fill();

    zoHostRecentFiles* m_files;
    bool m_openEnabled = true;
};
