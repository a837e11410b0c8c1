#include "zoDialogRobot.h"
#include "zoHPCWindowTest.h"

#include <QApplication>
#include <QDynamicPropertyChangeEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPair>
#include <QVector>

namespace
{
// Hears the notes as a host does.
class NoteSpy final : public QObject
{
public:
    explicit NoteSpy(QWidget* window) { window->installEventFilter(this); }

    QStringList of(const char* note) const
    {
        for (const auto& heard : m_heard) {
            if (heard.first == note)
                return heard.second;
        }
        return {};
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::DynamicPropertyChange) {
            const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
            const QVariant value = watched->property(name);
            if (value.isValid())
                m_heard.append({name, value.toStringList()});
        }
        return false;
    }

private:
    QVector<QPair<QByteArray, QStringList>> m_heard;
};
} // namespace

// What the cluster window tells its host of files.
class tst_zoHPCWindowNotes final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void savedFileIsTold();
    void fileThatCannotBeOpenedForWritingIsTold();
    void readFileIsTold();
    void fileThatIsNoConfigurationIsTold_data();
    void fileThatIsNoConfigurationIsTold();
    void remarksOfAnImportAreToldAndLogged();
    void lossesOfAnImportAreTold();
    void importOfAnotherFileTellsNothing();

private:
    void import(const QByteArray& legacy);
};

void tst_zoHPCWindowNotes::import(const QByteArray& legacy)
{
    write(path("old.xml"), legacy);
    const QString name = path("old.xml");
    const zoDialogRobot robot([&name](QDialog* dialog) {
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    action("Import legacy...")->trigger();
}

void tst_zoHPCWindowNotes::savedFileIsTold()
{
    const NoteSpy spy(m_window.get());

    m_window->saveConfig(path("wall"));

    QCOMPARE(spy.of("savedFile"), QStringList(path("wall.zhpc")));
    QVERIFY(spy.of("fileNotSaved").isEmpty());
    QVERIFY(!m_window->property("savedFile").isValid());
}

void tst_zoHPCWindowNotes::fileThatCannotBeOpenedForWritingIsTold()
{
    const NoteSpy spy(m_window.get());

    m_window->saveConfig(path("missing/wall.zhpc"));

    QCOMPARE(spy.of("fileNotSaved"), (QStringList{path("missing/wall.zhpc"), "No such file or directory"}));
    QVERIFY(spy.of("savedFile").isEmpty());
}

void tst_zoHPCWindowNotes::readFileIsTold()
{
    write(path("wall.zhpc"), s_document);
    const NoteSpy spy(m_window.get());

    m_window->loadConfig(path("wall.zhpc"));

    QCOMPARE(spy.of("readFile"), QStringList(path("wall.zhpc")));
    QVERIFY(spy.of("fileNotUnderstood").isEmpty());
}

void tst_zoHPCWindowNotes::fileThatIsNoConfigurationIsTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason"); // its beginning; empty: nothing is told
    QTest::addColumn<bool>("isLogged");

    const QByteArray whole(s_document);
    QTest::newRow("whole") << whole << QString() << false;
    QTest::newRow("cut-in-half") << whole.left(whole.size() / 2) << QStringLiteral("line ") << true;
    QTest::newRow("last-byte-missing") << whole.trimmed().chopped(1) << QStringLiteral("line ") << true;
    QTest::newRow("another-format") << QByteArray("<config><key name=\"a\">b</key></config>")
                                    << QStringLiteral("it is a configuration of the format before: File > "
                                                      "\"Import legacy...\" reads it")
                                    << false;
    QTest::newRow("other-xml") << QByteArray("<html/>") << QStringLiteral("it has none of the elements")
                               << false;
    QTest::newRow("no-xml") << QByteArray("gpu01 gpu02") << QStringLiteral("line 1, column 2: ") << true;
    QTest::newRow("nothing") << QByteArray() << QString() << false;
    QTest::newRow("blank") << QByteArray(" \n") << QString() << true;
}

void tst_zoHPCWindowNotes::fileThatIsNoConfigurationIsTold()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    QFETCH(bool, isLogged);
    write(path("wall.zhpc"), content);
    const NoteSpy spy(m_window.get());
    if (isLogged)
        expectMessage(QtCriticalMsg, QRegularExpression("line \\d+"));

    m_window->loadConfig(path("wall.zhpc"));

    const QStringList told = spy.of("fileNotUnderstood");
    QCOMPARE(told.isEmpty(), reason.isEmpty());
    if (!reason.isEmpty()) {
        QCOMPARE(told.at(0), path("wall.zhpc"));
        QVERIFY2(told.at(1).startsWith(reason), qUtf8Printable(told.at(1)));
    }
}

void tst_zoHPCWindowNotes::remarksOfAnImportAreToldAndLogged()
{
    const NoteSpy spy(m_window.get());

    import("<config>\n<key name=\"zoClusterNetworkCompression\">strange</key>\n</config>");

    const QStringList told = spy.of("importedFile");
    QVERIFY(told.size() > 1);
    QCOMPARE(told.at(0), path("old.xml"));
    const QString all = messages().join('\n');
    for (const QString& remark : told.mid(1))
        QVERIFY2(all.contains(path("old.xml") + ", " + remark), qUtf8Printable(remark));
}

// What is no parameter gets lost: the same lines as those of "zohpc convert", in the same order.
void tst_zoHPCWindowNotes::lossesOfAnImportAreTold()
{
    const char legacy[] = "<config>\n<!-- ours -->\n<key name=\"zoClusterNetworkCompression\">strange</key>\n"
                          "<wall colour=\"red\"/>\n</config>\n\0more";
    const NoteSpy spy(m_window.get());

    import(QByteArray(legacy, sizeof legacy - 1));

    const QStringList told = spy.of("importedFile").mid(1);
    QVERIFY2(told.size() == 4, qUtf8Printable(told.join('\n')));
    QCOMPARE(told.at(0), QStringLiteral("line 2, column 1: the comment is left out"));
    QCOMPARE(told.at(1), QStringLiteral("line 4, column 1: the element \"wall\" is left out"));
    QVERIFY2(told.at(2).endsWith("everything from the NUL character on is left out"),
             qUtf8Printable(told.at(2)));
    QVERIFY2(told.at(3).contains("strange"), qUtf8Printable(told.at(3)));
}

void tst_zoHPCWindowNotes::importOfAnotherFileTellsNothing()
{
    const NoteSpy spy(m_window.get());

    import("<html/>");

    QVERIFY(spy.of("importedFile").isEmpty());
}

ZO_TEST_MAIN(tst_zoHPCWindowNotes)
#include "tst_zoHPCWindowNotes.moc"
