#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCConfigEditGUIW.h>
#include <zoHPCConnectGUIW.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCPreferencesGUII.h>
#include <zoHPCTreeEditGUIW.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTranslator>

#include <memory>

// The letters that act with Alt in the dialogs of the module.
class tst_zoHPCDialogKeys final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lettersAreUnique_data();
    void lettersAreUnique();
    void letterOfAButtonClicksIt_data();
    void letterOfAButtonClicksIt();
    void otherLettersWriteNothing();

private:
    static std::unique_ptr<QWidget> dialog(const QString& name);
    static QStringList textsOf(const QWidget& window);
};

namespace
{
// The letter after the mark; none without one.
QChar letterOf(const QString& text)
{
    const QKeySequence key = QKeySequence::mnemonic(text);
    return key.isEmpty() ? QChar() : QChar(ushort(key[0] & ~Qt::ALT)).toLower();
}
} // namespace

std::unique_ptr<QWidget> tst_zoHPCDialogKeys::dialog(const QString& name)
{
    if (name == QLatin1String("hosts")) {
        auto hosts = std::make_unique<zoHPCConfigEditGUIW>();
        hosts->setServersFileEditable(true);
        hosts->setIsHostsText(true);
        return hosts;
    }
    if (name == QLatin1String("configuration"))
        return std::make_unique<zoHPCConfigEditGUIW>();
    if (name == QLatin1String("display-setup"))
        return std::make_unique<zoHPCDisplayGUII>();
    if (name == QLatin1String("connect"))
        return std::make_unique<zoHPCConnectGUIW>(nullptr, QStringLiteral("Connect"));
    if (name == QLatin1String("node"))
        return std::make_unique<zoHPCTreeEditGUIW>();
    return std::make_unique<zoHPCPreferencesGUII>();
}

// Everything that may have a letter, hidden pages included.
QStringList tst_zoHPCDialogKeys::textsOf(const QWidget& window)
{
    QStringList texts;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            texts << button->text();
        else if (const auto* box = qobject_cast<const QGroupBox*>(widget))
            texts << box->title();
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i);
        else if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy())
            texts << label->text();
    }
    return texts;
}

void tst_zoHPCDialogKeys::lettersAreUnique_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("name");

    for (const char* language : {"en", "de"}) {
        for (const char* name : {"hosts", "configuration", "display-setup", "connect", "node", "preferences"})
            QTest::addRow("%s-%s", name, language)
                << QString::fromLatin1(language) << QString::fromLatin1(name);
    }
}

void tst_zoHPCDialogKeys::lettersAreUnique()
{
    QFETCH(QString, language);
    QFETCH(QString, name);
    zoFakeHost host;
    QTranslator translator;
    QVERIFY(language == QLatin1String("en") ||
            translator.load(QStringLiteral("zoHPC_") + language, QStringLiteral(ZO_TRANSLATION_DIR)));
    QApplication::installTranslator(&translator);

    const std::unique_ptr<QWidget> window = dialog(name);

    QHash<QChar, QString> taken;
    for (const QString& text : textsOf(*window)) {
        const QChar letter = letterOf(text);
        if (letter.isNull())
            continue;
        QVERIFY2(!taken.contains(letter), qPrintable(text + QStringLiteral(" and ") + taken.value(letter)));
        taken.insert(letter, text);
    }
    for (const auto* box : window->findChildren<QDialogButtonBox*>()) {
        for (const QAbstractButton* button : box->buttons())
            QVERIFY2(!letterOf(button->text()).isNull(), qPrintable(button->text()));
    }
    QApplication::removeTranslator(&translator);
}

void tst_zoHPCDialogKeys::letterOfAButtonClicksIt_data()
{
    lettersAreUnique_data();
}

// Wherever the focus is, also in a text that takes letters.
void tst_zoHPCDialogKeys::letterOfAButtonClicksIt()
{
    QFETCH(QString, language);
    QFETCH(QString, name);
    zoFakeHost host;
    QTranslator translator;
    QVERIFY(language == QLatin1String("en") ||
            translator.load(QStringLiteral("zoHPC_") + language, QStringLiteral(ZO_TRANSLATION_DIR)));
    QApplication::installTranslator(&translator);
    const std::unique_ptr<QWidget> window = dialog(name);
    window->show();
    QApplication::setActiveWindow(window.get());
    QVERIFY(QTest::qWaitForWindowActive(window.get()));

    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        const QChar letter = letterOf(button->text());
        if (letter.isNull() || !button->isEnabled())
            continue;
        window->show(); // a button may have closed it
        QApplication::setActiveWindow(window.get());
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        auto* const text = window->findChild<QPlainTextEdit*>();
        QWidget* const focus = text ? static_cast<QWidget*>(text) : window.get();
        focus->setFocus();
        const QSignalSpy clicked(button, &QAbstractButton::clicked);

        QTest::keyClick(focus, letter.toLatin1(), Qt::AltModifier);

        QTRY_VERIFY2(clicked.count() == 1, qPrintable(button->text()));
        QVERIFY(!text || text->toPlainText().isEmpty());
    }
    QApplication::removeTranslator(&translator);
}

void tst_zoHPCDialogKeys::otherLettersWriteNothing()
{
    zoHPCConfigEditGUIW hosts;
    hosts.show();
    QApplication::setActiveWindow(&hosts);
    QVERIFY(QTest::qWaitForWindowActive(&hosts));
    auto* const text = hosts.findChild<QPlainTextEdit*>();
    text->setFocus();

    QTest::keyClick(text, 'y', Qt::AltModifier);
    QVERIFY(hosts.text().isEmpty());
    // As many keyboards write brackets.
    QTest::sendKeyEvent(QTest::Click, text, Qt::Key_BracketLeft, QStringLiteral("["),
                        Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClick(text, 'y');
    QVERIFY(hosts.text().endsWith(QLatin1Char('y')));
}

ZO_TEST_MAIN(tst_zoHPCDialogKeys)
#include "tst_zoHPCDialogKeys.moc"
