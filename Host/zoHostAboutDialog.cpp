#include "zoHostAboutDialog.h"

#include "zoModuleMetadata.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSysInfo>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <gnu/libc-version.h>

namespace
{
constexpr int s_iconSize = 64; // pixels
const QSize s_size(780, 480);

struct Library
{
    const char* name;
    QString version; // empty: of the nodes, not of this program
    const char* licence;
    QString use;
};

QList<Library> libraries()
{
    return {
        {"Qt", QString::fromLatin1(qVersion()), "LGPL-3.0-only",
         zoHostAboutDialog::tr("windows, pictures, XML, processes")},
        {"GNU C Library", QString::fromLatin1(gnu_get_libc_version()), "LGPL-2.1-or-later",
         zoHostAboutDialog::tr("the system")},
        {"GNU C++ Library", QString::number(_GLIBCXX_RELEASE), "GPL-3.0-or-later WITH GCC-exception-3.1",
         zoHostAboutDialog::tr("the language's library")},
        {"Eigen", QStringLiteral("3"), "MPL-2.0", zoHostAboutDialog::tr("measured rooms, in the modules")},
        {"Open MPI", QString(), "BSD-3-Clause", zoHostAboutDialog::tr("networks on MPI, on their nodes")},
    };
}

QTreeWidget* table(const QStringList& headers, const char* name, const QString& accessibleName)
{
    auto* made = new QTreeWidget;
    made->setObjectName(QLatin1String(name));
    made->setAccessibleName(accessibleName);
    made->setRootIsDecorated(false);
    made->setAlternatingRowColors(true);
    made->setHeaderLabels(headers);
    made->setUniformRowHeights(true);
    return made;
}

void fitColumns(QTreeWidget* tree)
{
    // What has no room is scrolled to, not cut.
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(tree->columnCount() - 1, QHeaderView::ResizeToContents);
    for (int column = 0; column + 1 < tree->columnCount(); ++column)
        tree->resizeColumnToContents(column);
}
} // namespace

zoHostAboutDialog::zoHostAboutDialog(const QStringList& moduleFiles, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AboutDialog"));
    setWindowTitle(tr("About zohost"));
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/host/zohost.svg")).pixmap(s_iconSize));
    auto* head = new QLabel(tr("<h2>zohost %1</h2><p>Shows and runs render cluster configurations.</p>")
                                .arg(QStringLiteral(ZO_VERSION)),
                            this);
    head->setObjectName(QStringLiteral("AboutHead"));
    auto* tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("AboutTabs"));
    tabs->addTab(createPrograms(moduleFiles), tr("Program"));
    tabs->addTab(createLibraries(), tr("Libraries"));
    tabs->addTab(createLicence(), tr("Licence"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* copy = buttons->addButton(tr("Copy versions"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("AboutCopy"));
    copy->setAutoDefault(false);
    copy->setToolTip(tr("For a report of a mistake"));
    connect(copy, &QPushButton::clicked, this,
            [moduleFiles] { QApplication::clipboard()->setText(versions(moduleFiles)); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);

    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addWidget(head, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(tabs, 1);
    layout->addWidget(buttons);
    resize(s_size);
}

zoHostAboutDialog::~zoHostAboutDialog() = default;

QString zoHostAboutDialog::versions(const QStringList& moduleFiles)
{
    QStringList lines{
        QStringLiteral("zohost %1").arg(QStringLiteral(ZO_VERSION)),
        QStringLiteral("Qt %1, built with %2, platform %3")
            .arg(QLatin1String(qVersion()), QStringLiteral(QT_VERSION_STR), QGuiApplication::platformName()),
        QStringLiteral("%1, %2").arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture())};
    for (const QString& file : moduleFiles) {
        const zoModuleMetadata module = zoModuleMetadata::read(file);
        const QString name = module.name().isEmpty() ? QFileInfo(file).fileName() : module.name();
        const QString version = module.version().isEmpty() ? QString() : QLatin1Char(' ') + module.version();
        lines << QStringLiteral("module %1%2, %3").arg(name, version, QDir::toNativeSeparators(file));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QWidget* zoHostAboutDialog::createPrograms(const QStringList& moduleFiles)
{
    auto* tree = table({tr("Name"), tr("Version"), tr("Licence"), tr("File")}, "AboutPrograms",
                       tr("Program and modules"));
    tree->addTopLevelItem(new QTreeWidgetItem(
        {QStringLiteral("zohost"), QStringLiteral(ZO_VERSION), QStringLiteral("Apache-2.0"),
         QDir::toNativeSeparators(QCoreApplication::applicationFilePath())}));
    for (const QString& file : moduleFiles) {
        const zoModuleMetadata module = zoModuleMetadata::read(file);
        tree->addTopLevelItem(
            new QTreeWidgetItem({module.name().isEmpty() ? QFileInfo(file).fileName() : module.name(),
                                 module.version().isEmpty() ? tr("not told") : module.version(),
                                 module.licence().isEmpty() ? tr("not told") : module.licence(),
                                 QDir::toNativeSeparators(file)}));
    }
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        tree->topLevelItem(row)->setToolTip(3, tree->topLevelItem(row)->text(3));
    fitColumns(tree);
    return tree;
}

QWidget* zoHostAboutDialog::createLibraries()
{
    auto* tree =
        table({tr("Library"), tr("Version"), tr("Licence"), tr("For")}, "AboutLibraries", tr("Libraries"));
    const QList<Library> all = libraries();
    for (const Library& library : all)
        tree->addTopLevelItem(new QTreeWidgetItem(
            {QLatin1String(library.name), library.version.isEmpty() ? tr("of the nodes") : library.version,
             QLatin1String(library.licence), library.use}));
    fitColumns(tree);
    auto* note =
        new QLabel(tr("They are libraries of the system and may be replaced by others of their kind. "
                      "Debian has the texts of their licences in /usr/share/doc and "
                      "/usr/share/common-licenses."));
    note->setWordWrap(true);
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(tree, 1);
    layout->addWidget(note);
    return page;
}

QWidget* zoHostAboutDialog::createLicence()
{
    auto* text = new QPlainTextEdit;
    text->setObjectName(QStringLiteral("AboutLicence"));
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFile file(QStringLiteral(":/host/LICENSE"));
    if (file.open(QIODevice::ReadOnly))
        text->setPlainText(QString::fromUtf8(file.readAll()));
    return text;
}
