#include "zoTestCase.h"

#include <zoHostAboutDialog.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

static void initResources()
{
    Q_INIT_RESOURCE(zohost);
}

// Versions and licences.
class tst_zoHostAboutDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void versionOfTheProgramIsShown();
    void librariesHaveVersionAndLicence();
    void modulesAreListed();
    void licenceIsShownWhole();
    void versionsAreCopied();
    void dialogFitsASmallScreen();
};

void tst_zoHostAboutDialog::versionOfTheProgramIsShown()
{
    const zoHostAboutDialog dialog({});

    QVERIFY(dialog.findChild<QLabel*>("AboutHead")->text().contains(ZO_VERSION));
}

void tst_zoHostAboutDialog::librariesHaveVersionAndLicence()
{
    const zoHostAboutDialog dialog({});

    const auto* tree = dialog.findChild<QTreeWidget*>("AboutLibraries");
    QVERIFY(tree->topLevelItemCount() >= 3);
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        for (int column = 0; column < tree->columnCount(); ++column)
            QVERIFY(!tree->topLevelItem(row)->text(column).isEmpty());
    }
    QCOMPARE(tree->topLevelItem(0)->text(0), QStringLiteral("Qt"));
    QCOMPARE(tree->topLevelItem(0)->text(1), QString(qVersion()));
    QVERIFY(tree->topLevelItem(0)->text(2).startsWith("LGPL-3.0"));
    QCOMPARE(tree->accessibleName(), QStringLiteral("Libraries"));
}

void tst_zoHostAboutDialog::modulesAreListed()
{
    const zoHostAboutDialog dialog({"/nowhere/libzoOther.so"});

    const auto* tree = dialog.findChild<QTreeWidget*>("AboutPrograms");
    QCOMPARE(tree->topLevelItemCount(), 2);
    QCOMPARE(tree->topLevelItem(1)->text(0), QStringLiteral("libzoOther.so"));
    QCOMPARE(tree->topLevelItem(1)->text(3), QStringLiteral("/nowhere/libzoOther.so"));
}

void tst_zoHostAboutDialog::licenceIsShownWhole()
{
    initResources();
    const zoHostAboutDialog dialog({});

    const QString text = dialog.findChild<QPlainTextEdit*>("AboutLicence")->toPlainText();

    QVERIFY(text.contains("Apache License"));
    QVERIFY(text.contains("END OF TERMS AND CONDITIONS"));
}

void tst_zoHostAboutDialog::versionsAreCopied()
{
    zoHostAboutDialog dialog({"/nowhere/libzoOther.so"});

    dialog.findChild<QPushButton*>("AboutCopy")->click();

    const QStringList lines = QApplication::clipboard()->text().split('\n');
    QCOMPARE(lines.at(0), QStringLiteral("zohost " ZO_VERSION));
    QVERIFY(lines.at(1).startsWith(QStringLiteral("Qt %1, built with " QT_VERSION_STR).arg(qVersion())));
    QCOMPARE(lines.at(3), QStringLiteral("module libzoOther.so, /nowhere/libzoOther.so"));
}

void tst_zoHostAboutDialog::dialogFitsASmallScreen()
{
    const zoHostAboutDialog dialog({});

    QVERIFY(dialog.height() <= 700 && dialog.width() <= 1300);
    QVERIFY(dialog.minimumSizeHint().height() <= 700);
}

ZO_TEST_MAIN(tst_zoHostAboutDialog)
#include "tst_zoHostAboutDialog.moc"
