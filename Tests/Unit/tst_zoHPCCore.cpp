#include "zoTestCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace
{
// The classes whose constructors `nm` names in these lines.
QSet<QString> constructedClasses(const QString& lines)
{
    static const QRegularExpression constructor(QStringLiteral(R"(\b(\w+)::\1\()"));
    QSet<QString> classes;
    QRegularExpressionMatchIterator matches = constructor.globalMatch(lines);
    while (matches.hasNext())
        classes << matches.next().captured(1);
    return classes;
}

// What `nm` lists of a file. An empty answer fails the test.
QString symbolsOf(const QStringList& options, const QString& file)
{
    QProcess nm;
    nm.start(QStringLiteral(ZO_NM), QStringList(options) << QStringLiteral("-C") << file);
    if (!nm.waitForFinished(60000) || nm.exitCode() != 0)
        return {};
    return QString::fromUtf8(nm.readAllStandardOutput());
}

// The widget classes of the toolkit and of the kernel.
QSet<QString> widgetClasses()
{
    QSet<QString> classes = constructedClasses(symbolsOf(
        {QStringLiteral("-D"), QStringLiteral("--defined-only")}, QStringLiteral(ZO_WIDGETS_LIBRARY)));
    // A row of a tree needs no widget.
    classes.remove(QStringLiteral("QTreeWidgetItem"));
    const QSet<QString> kernel = constructedClasses(symbolsOf(
        {QStringLiteral("-D"), QStringLiteral("--defined-only")}, QStringLiteral(ZO_KERNEL_LIBRARY)));
    for (const QString& name : kernel) {
        if (name.startsWith(QLatin1String("QZO")))
            classes << name;
    }
    return classes;
}

QStringList coreFiles()
{
    return QStringLiteral(ZO_CORE_FILES).split(QLatin1Char(','));
}
} // namespace

// What programs without a window link: no widget is constructed there, and none of ours is known.
class tst_zoHPCCore final : public zoTestCase
{
    Q_OBJECT

private slots:
    void widgetsAreKnown();
    void coreConstructsNoWidget();
    void moduleConstructsWidgets();
    void coreKnowsOnlyItself();
};

// Without it the others could not fail.
void tst_zoHPCCore::widgetsAreKnown()
{
    const QSet<QString> widgets = widgetClasses();

    for (const char* name : {"QWidget", "QDialog", "QTreeWidget", "QTreeView", "QApplication", "QZOToolBar"})
        QVERIFY2(widgets.contains(QLatin1String(name)), name);
}

void tst_zoHPCCore::coreConstructsNoWidget()
{
    const QString symbols = symbolsOf({QStringLiteral("-u")}, QStringLiteral(ZO_CORE_LIBRARY));
    const QSet<QString> constructed = constructedClasses(symbols);

    // The archive was read.
    QVERIFY(constructed.contains(QStringLiteral("QTreeWidgetItem")));
    QCOMPARE(QStringList((constructed & widgetClasses()).values()).join(QLatin1Char(' ')), QString());
}

void tst_zoHPCCore::moduleConstructsWidgets()
{
    const QSet<QString> constructed = constructedClasses(
        symbolsOf({QStringLiteral("-D"), QStringLiteral("-u")}, QStringLiteral(ZO_MODULE_LIBRARY)));

    QVERIFY((constructed & widgetClasses()).contains(QStringLiteral("QDialog")));
}

void tst_zoHPCCore::coreKnowsOnlyItself()
{
    static const QRegularExpression include(QStringLiteral("^#include [\"<]((?:ui_)?zoHPC\\w*\\.h)[\">]"),
                                            QRegularExpression::MultilineOption);
    const QStringList files = coreFiles();
    QSet<QString> own;
    for (const QString& file : files)
        own << QFileInfo(file).fileName();
    QVERIFY(own.contains(QStringLiteral("zoHPCTreeItem.h")));
    QVERIFY(!own.contains(QStringLiteral("zoHPCTreeGUIW.h")));

    QStringList others;
    for (const QString& name : files) {
        QFile file(QDir(QStringLiteral(ZO_MODULE_FOLDER)).filePath(name));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
        QRegularExpressionMatchIterator matches = include.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QString header = matches.next().captured(1);
            if (!own.contains(header))
                others << name + QStringLiteral(": ") + header;
        }
    }
    QCOMPARE(others.join(QLatin1Char('\n')), QString());
}

ZO_TEST_MAIN(tst_zoHPCCore)
#include "tst_zoHPCCore.moc"
