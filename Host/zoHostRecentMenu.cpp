#include "zoHostRecentMenu.h"

#include "zoHostRecentFiles.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr int s_folderWidth = 320; // pixels

QString withoutMnemonic(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&")).replace(QLatin1Char('\t'), QLatin1Char(' '));
}

// Below the home folder as people write it.
QString shortFolder(const QFileInfo& file)
{
    const QString folder = file.absolutePath();
    const QString home = QDir::homePath();
    if (folder == home || folder.startsWith(home + QLatin1Char('/')))
        return QLatin1Char('~') + folder.mid(home.size());
    return QDir::toNativeSeparators(folder);
}
} // namespace

zoHostRecentMenu::zoHostRecentMenu(zoHostRecentFiles* files, QWidget* parent) : QMenu(parent), m_files(files)
{
    setObjectName(QStringLiteral("RecentMenu"));
    setTitle(tr("&Recent"));
    setToolTipsVisible(true);
    connect(m_files, &zoHostRecentFiles::changed, this, &zoHostRecentMenu::fill);
    connect(this, &QMenu::aboutToShow, this, &zoHostRecentMenu::fill);
    fill();
}

zoHostRecentMenu::~zoHostRecentMenu() = default;

void zoHostRecentMenu::setOpenEnabled(bool enabled)
{
    if (m_openEnabled == enabled)
        return;
    m_openEnabled = enabled;
    fill();
}

void zoHostRecentMenu::fill()
{
    clear();
    const QStringList files = m_files->files();
    int number = 0;
    for (const QString& name : files) {
        const QFileInfo file(name);
        ++number;
        const QString key = number < 10 ? QStringLiteral("&%1  ").arg(number)
                                        : QStringLiteral("1&0  "); // the tenth is the last
        // Behind the tabulator, where the short cuts stand: the names line up and the folders do.
        const QString folder = fontMetrics().elidedText(shortFolder(file), Qt::ElideMiddle, s_folderWidth);
        QAction* action =
            addAction(key + withoutMnemonic(file.fileName()) + QLatin1Char('\t') + withoutMnemonic(folder));
        action->setData(name);
        action->setToolTip(QDir::toNativeSeparators(name));
        action->setStatusTip(action->toolTip());
        action->setEnabled(m_openEnabled);
        // Later, since opening fills the menu anew and so destroys the action.
        connect(
            action, &QAction::triggered, this, [this, name] { emit fileChosen(name); }, Qt::QueuedConnection);
    }
    if (files.isEmpty())
        addAction(tr("No files yet"))->setEnabled(false);
    addSeparator();
    QAction* clearing = addAction(tr("&Clear list"));
    clearing->setObjectName(QStringLiteral("ClearRecent"));
    clearing->setEnabled(!files.isEmpty());
    connect(clearing, &QAction::triggered, m_files, &zoHostRecentFiles::clear, Qt::QueuedConnection);
}
