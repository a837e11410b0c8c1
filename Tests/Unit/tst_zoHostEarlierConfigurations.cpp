#include "zoFullDisk.h"
#include "zoTestCase.h"

#include <zoHostEarlierConfigurations.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <ctime>
#include <memory>

// The configurations that others took the place of.
class tst_zoHostEarlierConfigurations final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void keptOnesComeNewestFirst();
    void timeAndOriginAreKept();
    void onlyTheLastTwentyStay();
    void identicalNeighboursAreKeptOnce();
    void emptyTextAndNewDocumentAreNotKept();
    void keptOnesOutliveTheHost();
    void hostsSideBySideDoNotOverwriteEachOther();
    void nobodyWritesWhileAnotherHostDoes();
    void filesAreConfigurationsByteForByte();
    void foreignFilesAreLeftAlone();
    void orderIsThatOfTheReplacementsWhateverTheClockSays();
    void fileWithoutOriginIsStillListed();
    void unwritableFolderLosesNothing();
    void fullDiskLosesNothing();
    void whatAKillLeftIsRemoved();
    void unfinishedWorkIsMarkedUntilItWasOffered();
    void unfinishedWorkThatIsKeptAlreadyIsMarked();
    void unansweredWorkStaysLongest();
    void sumOfTheFileIsKept();
    void waitingOnesAreWrittenOnceTheFolderCanBe();
    void unreadableFileIsLogged();
    void textsAreCopied();
    void defaultFolderIsInTheDataOfTheUser();

private:
    QString folder() const { return m_directory->filePath("data/earlier"); }
    QStringList texts() const;
    QStringList fileNames() const { return QDir(folder()).entryList({"*.zhpc"}, QDir::Files, QDir::Name); }
    void blockFolder() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<zoHostEarlierConfigurations> m_earlier;
};

void tst_zoHostEarlierConfigurations::initTestCase()
{
    zoTestCase::initTestCase();
    qputenv("TZ", "JST-9"); // times of day differ from those of the files
    tzset();
}

void tst_zoHostEarlierConfigurations::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());
}

void tst_zoHostEarlierConfigurations::cleanup()
{
    m_earlier.reset();
    zoTestCase::cleanup();
}

QStringList tst_zoHostEarlierConfigurations::texts() const
{
    QStringList found;
    const auto entries = m_earlier->entries();
    for (const auto& entry : entries)
        found << m_earlier->textOf(entry);
    return found;
}

// A file where the folder should be: nothing can be made or written there, whoever runs the test.
void tst_zoHostEarlierConfigurations::blockFolder() const
{
    QFile file(m_directory->filePath("data"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_zoHostEarlierConfigurations::keptOnesComeNewestFirst()
{
    QCOMPARE(m_earlier->entries().size(), 0);
    QSignalSpy changed(m_earlier.get(), &zoHostEarlierConfigurations::changed);

    m_earlier->keep("<a/>", QString());
    m_earlier->keep("<b/>", QString());

    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(changed.count(), 2);
}

void tst_zoHostEarlierConfigurations::timeAndOriginAreKept()
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);

    m_earlier->keep("<a/>", QString::fromUtf8("/walls/größe %1.zhpc"));

    const auto entry = m_earlier->entries().constFirst();
    QCOMPARE(entry.originFile, QString::fromUtf8("/walls/größe %1.zhpc"));
    QVERIFY(entry.replaced >= before);
    QVERIFY(entry.replaced <= QDateTime::currentDateTimeUtc());
}

void tst_zoHostEarlierConfigurations::onlyTheLastTwentyStay()
{
    for (int i = 0; i < 23; ++i)
        m_earlier->keep(QString::number(i), QString());

    QCOMPARE(texts().size(), 20);
    QCOMPARE(texts().constFirst(), QStringLiteral("22"));
    QCOMPARE(texts().constLast(), QStringLiteral("3"));
    QCOMPARE(fileNames().size(), 20);
    QCOMPARE(QDir(folder()).entryList({"*.origin"}, QDir::Files).size(), 20);
}

void tst_zoHostEarlierConfigurations::identicalNeighboursAreKeptOnce()
{
    m_earlier->keep("<a/>", QString());
    m_earlier->keep("<a/>", "/a.zhpc");
    m_earlier->keep("<b/>", QString());
    m_earlier->keep("<a/>", QString());

    QCOMPARE(texts(), QStringList({"<a/>", "<b/>", "<a/>"}));
}

void tst_zoHostEarlierConfigurations::emptyTextAndNewDocumentAreNotKept()
{
    m_earlier->setNewDocument("<new/>");

    m_earlier->keep(QString(), QString());
    m_earlier->keep("<new/>", QString());

    QCOMPARE(m_earlier->entries().size(), 0);
}

void tst_zoHostEarlierConfigurations::keptOnesOutliveTheHost()
{
    m_earlier->keep("<a/>", "/a.zhpc");
    m_earlier->keep("<b/>", QString());
    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());

    m_earlier->keep("<b/>", QString());
    m_earlier->keep("<c/>", QString());

    QCOMPARE(texts(), QStringList({"<c/>", "<b/>", "<a/>"}));
    QCOMPARE(m_earlier->entries().constLast().originFile, QStringLiteral("/a.zhpc"));
}

void tst_zoHostEarlierConfigurations::hostsSideBySideDoNotOverwriteEachOther()
{
    zoHostEarlierConfigurations other(folder());
    m_earlier->keep("<a/>", QString());

    other.keep("<b/>", QString());
    m_earlier->keep("<c/>", QString());

    QCOMPARE(texts(), QStringList({"<c/>", "<b/>", "<a/>"}));
}

void tst_zoHostEarlierConfigurations::nobodyWritesWhileAnotherHostDoes()
{
    QVERIFY(QDir().mkpath(folder()));
    QLockFile other(QDir(folder()).filePath(".lock"));
    QVERIFY(other.tryLock());
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to keep the replaced configuration in .*"));

    m_earlier->keep("<a/>", QString());

    QCOMPARE(fileNames(), QStringList());
    QCOMPARE(texts(), QStringList("<a/>")); // not lost: it waits
    other.unlock();
    m_earlier->keep("<b/>", QString());
    QCOMPARE(fileNames().size(), 2);
    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
}

void tst_zoHostEarlierConfigurations::filesAreConfigurationsByteForByte()
{
    const QString text = QString::fromUtf8("<a name=\"größe\">\r\n\n</a>\n");

    m_earlier->keep(text, "/a.zhpc");

    QCOMPARE(fileNames().size(), 1);
    QVERIFY2(QRegularExpression("^000001_\\d{8}T\\d{6}Z\\.zhpc$").match(fileNames().constFirst()).hasMatch(),
             qPrintable(fileNames().constFirst()));
    QFile file(QDir(folder()).filePath(fileNames().constFirst()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), text.toUtf8());
    QCOMPARE(texts(), QStringList(text));
}

void tst_zoHostEarlierConfigurations::foreignFilesAreLeftAlone()
{
    QVERIFY(QDir().mkpath(folder()));
    QFile foreign(QDir(folder()).filePath("mine.zhpc"));
    QVERIFY(foreign.open(QIODevice::WriteOnly));

    for (int i = 0; i < 21; ++i)
        m_earlier->keep(QString::number(i), QString());

    QCOMPARE(texts().size(), 20);
    QVERIFY(foreign.exists());
}

void tst_zoHostEarlierConfigurations::orderIsThatOfTheReplacementsWhateverTheClockSays()
{
    m_earlier->keep("<a/>", QString());
    // As if the clock had been in another century then; and a number beyond the usual width.
    QVERIFY(QFile::rename(QDir(folder()).filePath(fileNames().constFirst()),
                          QDir(folder()).filePath("9999999_21260101T000000Z.zhpc")));

    m_earlier->keep("<b/>", QString());

    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(m_earlier->entries().constLast().replaced, QDateTime(QDate(2126, 1, 1), QTime(0, 0), Qt::UTC));
}

void tst_zoHostEarlierConfigurations::fileWithoutOriginIsStillListed()
{
    m_earlier->keep("<a/>", "/a.zhpc");
    const QStringList origins = QDir(folder()).entryList({"*.origin"}, QDir::Files);
    QCOMPARE(origins.size(), 1);
    QVERIFY(QFile::remove(QDir(folder()).filePath(origins.constFirst())));

    QCOMPARE(texts(), QStringList("<a/>"));
    QCOMPARE(m_earlier->entries().constFirst().originFile, QString());
}

void tst_zoHostEarlierConfigurations::unwritableFolderLosesNothing()
{
    blockFolder();
    for (int i = 0; i < 3; ++i)
        expectMessage(QtCriticalMsg,
                      QRegularExpression("Unable to keep the replaced configuration in .*data"));

    m_earlier->keep("<a/>", "/a.zhpc");
    m_earlier->keep("<b/>", QString());

    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(m_earlier->entries().constLast().originFile, QStringLiteral("/a.zhpc"));
    m_earlier.reset();
}

void tst_zoHostEarlierConfigurations::fullDiskLosesNothing()
{
    QVERIFY(QDir().mkpath(folder()));
    zoFullDisk disk(folder());
    m_earlier->keep("<a/>", "/a.zhpc");
    disk.fill();
    expectMessage(QtCriticalMsg,
                  QRegularExpression("Unable to keep the replaced configuration in .*" + disk.reason()));

    m_earlier->keep(QString(800, QLatin1Char('b')), "/b.zhpc");

    QCOMPARE(texts(), QStringList({QString(800, QLatin1Char('b')), "<a/>"}));
    QCOMPARE(m_earlier->entries().constFirst().originFile, QStringLiteral("/b.zhpc"));
    QCOMPARE(fileNames().size(), 1);
    QCOMPARE(QDir(folder()).entryList({"*.origin"}, QDir::Files).size(), 1);
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to keep"));
    m_earlier.reset();
}

void tst_zoHostEarlierConfigurations::whatAKillLeftIsRemoved()
{
    m_earlier->keep("<a/>", "/a.zhpc");
    // An origin whose configuration was never written, and a file that never got its name.
    for (const char* name :
         {"000002_20260101T000000Z.origin", "000002_20260101T000000Z.zhpc.0123abcd",
          "000003_20260101T000000Z.origin.0123abcd", "000004_20260101T000000Z.zhpc.0123abcd0123abcd"})
        QVERIFY(QFile(QDir(folder()).filePath(name)).open(QIODevice::WriteOnly));

    m_earlier->keep("<b/>", QString());

    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(fileNames().size(), 2);
    QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 4);
    QCOMPARE(m_earlier->entries().constLast().originFile, QStringLiteral("/a.zhpc"));
}

void tst_zoHostEarlierConfigurations::unfinishedWorkIsMarkedUntilItWasOffered()
{
    m_earlier->keep("<a/>", "/a.zhpc");
    m_earlier->keepUnfinished("<b/>", "/b.zhpc");
    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());

    const auto unfinished = m_earlier->unfinished();
    QCOMPARE(unfinished.size(), 1);
    QCOMPARE(m_earlier->textOf(unfinished.constFirst()), QStringLiteral("<b/>"));
    QCOMPARE(unfinished.constFirst().originFile, QStringLiteral("/b.zhpc"));
    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));

    m_earlier->finish(unfinished.constFirst());

    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());
    QCOMPARE(m_earlier->unfinished().size(), 0);
    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(m_earlier->entries().constFirst().originFile, QStringLiteral("/b.zhpc"));
}

void tst_zoHostEarlierConfigurations::unfinishedWorkThatIsKeptAlreadyIsMarked()
{
    m_earlier->keep("<a/>", QString());
    m_earlier->keepUnfinished("<a/>", QString());
    m_earlier->keepUnfinished("<a/>", QString());

    QCOMPARE(m_earlier->unfinished().size(), 1);
    QCOMPARE(texts(), QStringList({"<a/>", "<a/>"}));
}

// Others take the places of what somebody has answered for first.
void tst_zoHostEarlierConfigurations::unansweredWorkStaysLongest()
{
    m_earlier->keepUnfinished("<work/>", "/a.zhpc");
    for (int i = 0; i < zoHostEarlierConfigurations::Limit + 5; ++i)
        m_earlier->keep(QString::number(i), QString());

    QCOMPARE(fileNames().size(), int(zoHostEarlierConfigurations::Limit));
    QCOMPARE(m_earlier->unfinished().size(), 1);
    QCOMPARE(texts().constLast(), QStringLiteral("<work/>"));
}

void tst_zoHostEarlierConfigurations::sumOfTheFileIsKept()
{
    m_earlier->keepUnfinished("<a/>", QString::fromUtf8("/größe.zhpc"), "0123abcd");
    m_earlier->keepUnfinished("<b/>", "/b.zhpc");
    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());

    const auto works = m_earlier->unfinished();
    QCOMPARE(works.at(1).originFile, QString::fromUtf8("/größe.zhpc"));
    QCOMPARE(works.at(1).originSum, QByteArray("0123abcd"));
    QCOMPARE(works.at(0).originFile, QStringLiteral("/b.zhpc"));
    QCOMPARE(works.at(0).originSum, QByteArray());
}

void tst_zoHostEarlierConfigurations::waitingOnesAreWrittenOnceTheFolderCanBe()
{
    blockFolder();
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to keep"));
    m_earlier->keep("<a/>", "/a.zhpc");
    QVERIFY(QFile::remove(m_directory->filePath("data")));

    m_earlier->keep("<b/>", QString());

    m_earlier = std::make_unique<zoHostEarlierConfigurations>(folder());
    QCOMPARE(texts(), QStringList({"<b/>", "<a/>"}));
    QCOMPARE(m_earlier->entries().constLast().originFile, QStringLiteral("/a.zhpc"));
}

void tst_zoHostEarlierConfigurations::unreadableFileIsLogged()
{
    m_earlier->keep("<a/>", QString());
    const auto entry = m_earlier->entries().constFirst();
    QVERIFY(QFile::remove(entry.fileName));
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to read earlier configuration .*000001_"));

    QVERIFY(m_earlier->textOf(entry).isNull());
}

void tst_zoHostEarlierConfigurations::textsAreCopied()
{
    blockFolder();
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to keep"));
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to keep"));
    QString text = "<a/>";
    QString origin = "/a.zhpc";

    m_earlier->keep(QString::fromRawData(text.constData(), text.size()),
                    QString::fromRawData(origin.constData(), origin.size()));
    text.fill(QLatin1Char('x'));
    origin.fill(QLatin1Char('x'));

    QCOMPARE(texts(), QStringList("<a/>"));
    QCOMPARE(m_earlier->entries().constFirst().originFile, QStringLiteral("/a.zhpc"));
    m_earlier.reset();
}

void tst_zoHostEarlierConfigurations::defaultFolderIsInTheDataOfTheUser()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);

    QCOMPARE(zoHostEarlierConfigurations::defaultFolder(), data + "/earlier");
}

ZO_TEST_MAIN(tst_zoHostEarlierConfigurations)
#include "tst_zoHostEarlierConfigurations.moc"
