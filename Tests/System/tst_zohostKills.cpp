#include "zoTestCase.h"

#include <zoHostEarlierConfigurations.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <memory>

namespace
{
constexpr int s_timeoutMs = 120000;
constexpr quint32 s_seed = 20261122;
constexpr int s_kills = 12;        // of each kind
constexpr int s_mostSaves = 5;     // before a kill
constexpr int s_longestUs = 30000; // a save with all around it takes about as long
constexpr int s_mostKept = 10;     // before a kill

int numberOf(const char* variable, int otherwise)
{
    const int wanted = qEnvironmentVariableIntValue(variable);
    return wanted > 0 ? wanted : otherwise;
}

quint32 seedOfKills()
{
    bool isSeed = false;
    const uint seed = qEnvironmentVariable("ZO_SEED").toUInt(&isSeed);
    return isSeed ? seed : s_seed;
}

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What a file that is written over can hold when the writer is killed: the beginning of the new bytes, and after
// it the old ones.
bool isBetween(const QByteArray& content, const QByteArray& before, const QByteArray& after)
{
    const auto end = std::mismatch(content.begin(), content.end(), after.begin(), after.end()).first;
    const int same = int(end - content.begin());
    return content.mid(same) == before.mid(same);
}
} // namespace

// The whole host, killed at any time while its window saves, or while it keeps what is not saved.
class tst_zohostKills final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void fileIsTheOldOrTheNewOne_data();
    void fileIsTheOldOrTheNewOne();
    void keptWorkIsTheLastOrTheOneBefore();

private:
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    QString earlierFolder() const { return path("data/zo/zohost/earlier"); }
    QProcessEnvironment environment(const QString& dataFolder) const;
    std::unique_ptr<QProcess> start(int rounds) const;
    // Kills a host after so many such lines and so much time; what it printed.
    static QByteArray kill(QProcess& process, const char* line, int lines, int us);
    void checkEarlier() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_texts[2];
    QString m_files[2];
};

void tst_zohostKills::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(QDir(m_folder->path()).mkpath("walls"));
    // The window saves them as they are.
    const char* const samples[] = {"cave-4-sided.zhpc", "tiledwall-3x5-gateway.zhpc"};
    for (int i = 0; i < 2; ++i) {
        m_files[i] = m_folder->filePath(QLatin1String(samples[i]));
        QVERIFY(QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/") + samples[i], m_files[i]));
        m_texts[i] = contentOf(m_files[i]);
    }
    QVERIFY(m_texts[0].size() != m_texts[1].size());
}

QProcessEnvironment tst_zohostKills::environment(const QString& dataFolder) const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert("QT_QPA_PLATFORM", "offscreen");
    result.insert("XDG_CONFIG_HOME", path("config"));
    result.insert("XDG_DATA_HOME", dataFolder);
    result.insert("XDG_RUNTIME_DIR", m_folder->path());
    result.insert("LC_ALL", "C.UTF-8");
    result.remove("ZOKE_DATA");
    return result;
}

std::unique_ptr<QProcess> tst_zohostKills::start(int rounds) const
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment variables = environment(path("data"));
    variables.insert("ZO_SAVING_FILES", m_files[0] + ':' + m_files[1]);
    variables.insert("ZO_SAVING_TARGET", path("walls/wall.zhpc"));
    variables.insert("ZO_SAVING_ROUNDS", QString::number(rounds));
    process->setProcessEnvironment(variables);
    process->setWorkingDirectory(m_folder->path());
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->start(QStringLiteral(ZO_HOST_FILE),
                   {"--engine", "local", "--module", QStringLiteral(ZO_MODULE_FILE), "--module",
                    QStringLiteral(ZO_FIXTURE_DIR "/libzoSavingModule.so")});
    return process;
}

QByteArray tst_zohostKills::kill(QProcess& process, const char* line, int lines, int us)
{
    QByteArray output;
    [&] {
        while (output.count(line) < lines) {
            QVERIFY2(process.waitForReadyRead(s_timeoutMs), output.constData());
            output += process.readAll();
        }
        ::usleep(useconds_t(us)); // the moment that is drawn: anything may go on in the other process
        ::kill(pid_t(process.processId()), SIGKILL);
        QVERIFY(process.waitForFinished(s_timeoutMs));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit); // it had not ended before
    }();
    return output + process.readAll();
}

// Whole, and with the file that each came from.
void tst_zohostKills::checkEarlier() const
{
    const zoHostEarlierConfigurations earlier(earlierFolder());
    const QVector<zoHostEarlierConfigurations::Entry> entries = earlier.entries();
    QVERIFY(entries.size() <= zoHostEarlierConfigurations::Limit);
    for (const auto& entry : entries) {
        QVERIFY2(contentOf(entry.fileName) == m_texts[0] || contentOf(entry.fileName) == m_texts[1],
                 qPrintable(entry.fileName));
        QCOMPARE(entry.originFile, path("walls/wall.zhpc"));
        QVERIFY(!entry.isUnfinished);
    }
}

void tst_zohostKills::fileIsTheOldOrTheNewOne_data()
{
    QTest::addColumn<bool>("hasSecondName");

    QTest::newRow("replaced") << false;
    QTest::newRow("overwritten") << true;
}

// ZO_KILLS and ZO_SEED ask for other kills than these.
void tst_zohostKills::fileIsTheOldOrTheNewOne()
{
    QFETCH(bool, hasSecondName);
    const QString target = path("walls/wall.zhpc");
    QVERIFY(QFile::copy(m_files[0], target));
    if (hasSecondName)
        QCOMPARE(::link(QFile::encodeName(target).constData(),
                        QFile::encodeName(path("walls/second")).constData()),
                 0);
    const int kills = numberOf("ZO_KILLS", s_kills);
    QRandomGenerator random(seedOfKills());
    int found[2] = {0, 0};

    for (int i = 0; i < kills; ++i) {
        const int saves = random.bounded(1, s_mostSaves + 1);
        kill(*start(0), "saved ", saves, random.bounded(s_longestUs));
        if (QTest::currentTestFailed())
            return;
        const QByteArray content = contentOf(target);
        const bool isOld = content == m_texts[0];
        if (hasSecondName)
            QVERIFY(isBetween(content, m_texts[0], m_texts[1]) || isBetween(content, m_texts[1], m_texts[0]));
        else
            QVERIFY2(isOld || content == m_texts[1], content.constData());
        ++found[isOld ? 0 : 1];
        checkEarlier();
    }

    qInfo("%d kills: %d times one file, %d times the other", kills, found[0], found[1]);
    // A host that is left in peace takes away what they left.
    const auto last = start(5);
    QVERIFY(last->waitForFinished(s_timeoutMs));
    QVERIFY2(last->exitStatus() == QProcess::NormalExit && last->exitCode() == 0,
             last->readAll().constData());
    QCOMPARE(contentOf(target), m_texts[0]);
    QCOMPARE(QDir(path("walls")).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             hasSecondName ? QStringList({"second", "wall.zhpc"}) : QStringList("wall.zhpc"));
    checkEarlier();
    const QStringList kept = QDir(earlierFolder()).entryList(QDir::Files, QDir::Name);
    QVERIFY(!kept.isEmpty());
    for (const QString& name : kept)
        QVERIFY2(QFileInfo(name).suffix() == "origin" || QFileInfo(name).suffix() == "zhpc",
                 qPrintable(name));
    QCOMPARE(kept.filter(QRegularExpression("\\.origin$")).size(),
             kept.filter(QRegularExpression("\\.zhpc$")).size());
}

// A host that keeps and changes its work without a pause. ZO_AUTOSAVE_KILLS and ZO_SEED ask for other kills.
void tst_zohostKills::keptWorkIsTheLastOrTheOneBefore()
{
    const int kills = numberOf("ZO_AUTOSAVE_KILLS", s_kills);
    QRandomGenerator random(seedOfKills());
    int found[2] = {0, 0};

    for (int i = 0; i < kills; ++i) {
        const QString data = m_folder->filePath(QStringLiteral("kept-%1").arg(i));
        QProcess process;
        process.setProcessEnvironment(environment(data));
        process.start(QStringLiteral(ZO_KEEPING_HOST), {QStringLiteral(ZO_MODULE_FILE)});
        const int times = random.bounded(1, s_mostKept + 1);
        const QByteArray output = kill(process, "kept ", times, random.bounded(s_longestUs));
        if (QTest::currentTestFailed())
            return;

        QByteArrayList announced;
        QByteArray kept;
        for (const QByteArray& line : output.split('\n')) {
            if (line.startsWith("keeping "))
                announced << line.mid(8);
            else if (line.startsWith("kept "))
                kept = line.mid(5);
        }
        const zoHostEarlierConfigurations earlier(data + QStringLiteral("/zo/zohost/earlier"));
        const QVector<zoHostEarlierConfigurations::Entry> entries = earlier.unfinished();
        // What the next start offers: one work, whole.
        QVERIFY2(!entries.isEmpty(), output.constData());
        QByteArrayList sums;
        for (const auto& entry : entries) {
            const QByteArray text = earlier.textOf(entry).toUtf8();
            sums << QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
            QVERIFY2(announced.contains(sums.constLast()), text.constData());
        }
        QVERIFY2(sums.contains(kept) || sums.contains(announced.constLast()), output.constData());
        ++found[sums.contains(kept) ? 0 : 1];
    }

    qInfo("%d kills: %d times what was kept, %d times what was being kept", kills, found[0], found[1]);
}

ZO_TEST_MAIN(tst_zohostKills)
#include "tst_zohostKills.moc"
