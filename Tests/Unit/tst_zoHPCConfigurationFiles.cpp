#include "zoTestCase.h"

#include <zoFileWriter.h>
#include <zoHPCConfigurationFiles.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

// Which file of a configuration is open, and what of it is saved.
class tst_zoHPCConfigurationFiles final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void suffixIsAppendedWhenMissing_data();
    void suffixIsAppendedWhenMissing();
    void writtenFileIsCurrentAndItsFolderOffered();
    void closedFileLeavesItsFolder();
    void nameThatCannotBeOpenedChangesNothing();
    void textIsAskedForOnceAndOnlyWhenTheFileIsOpen();
    void textEndsAtTheFirstNulByte();
    void bytesThatAreNoTextAreKeptBesideTheFile();
    void bytesThatCannotBeKeptAreNotOverwritten();
    void hostThatIsAskedKeepsWhatIsNoText();
    void missingFileIsReported();
    void missingLegacyFileIsEmpty();
    void untouchedConfigurationIsNotWorthKeeping();
    void savedConfigurationDiffersFromOthers();

private:
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    void put(const char* name, const QByteArray& bytes) const;
    QByteArray contentOf(const char* name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_zoHPCConfigurationFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_zoHPCConfigurationFiles::cleanup()
{
    zoFileWriter::setGuard({});
    m_folder.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCConfigurationFiles::put(const char* name, const QByteArray& bytes) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray tst_zoHPCConfigurationFiles::contentOf(const char* name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_zoHPCConfigurationFiles::suffixIsAppendedWhenMissing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QStringLiteral("cfg") << QStringLiteral("cfg.zhpc");
    QTest::newRow("any-case") << QStringLiteral("cfg.Zhpc") << QStringLiteral("cfg.Zhpc");
    QTest::newRow("other") << QStringLiteral("a.xml") << QStringLiteral("a.xml.zhpc");
}

void tst_zoHPCConfigurationFiles::suffixIsAppendedWhenMissing()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    zoHPCConfigurationFiles files;

    QVERIFY(files.write(m_folder->filePath(name), [] { return QStringLiteral("text"); }));

    QCOMPARE(files.current(), m_folder->filePath(expected));
    QFile file(m_folder->filePath(expected));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("text"));
}

void tst_zoHPCConfigurationFiles::writtenFileIsCurrentAndItsFolderOffered()
{
    zoHPCConfigurationFiles files;
    const QString before = files.directory();

    QVERIFY(files.write(path("a.zhpc"), [] { return QString(); }));

    QCOMPARE(QFileInfo(before).fileName(), QStringLiteral("cluster"));
    QCOMPARE(files.current(), path("a.zhpc"));
    QCOMPARE(files.directory(), m_folder->path());
}

void tst_zoHPCConfigurationFiles::closedFileLeavesItsFolder()
{
    zoHPCConfigurationFiles files;
    files.setCurrent(path("a.zhpc"));

    files.closeCurrent();

    QCOMPARE(files.current(), QString());
    QCOMPARE(files.directory(), m_folder->path());
}

void tst_zoHPCConfigurationFiles::nameThatCannotBeOpenedChangesNothing()
{
    zoHPCConfigurationFiles files;
    files.setCurrent(path("a.zhpc"));

    QVERIFY(!files.write(path("missing/b.zhpc"), [] { return QString(); }));
    QVERIFY(!files.write(QString(), [] { return QString(); }));

    QCOMPARE(files.current(), path("a.zhpc"));
    QCOMPARE(files.directory(), m_folder->path());
}

void tst_zoHPCConfigurationFiles::textIsAskedForOnceAndOnlyWhenTheFileIsOpen()
{
    zoHPCConfigurationFiles files;
    int asked = 0;
    const auto text = [&asked] {
        ++asked;
        return QString();
    };

    files.write(path("missing/b.zhpc"), text);
    QCOMPARE(asked, 0);
    files.write(path("b.zhpc"), text);
    QCOMPARE(asked, 1);
}

void tst_zoHPCConfigurationFiles::textEndsAtTheFirstNulByte()
{
    put("a.zhpc", QByteArray("one\0two", 7));
    QString text;

    QVERIFY(zoHPCConfigurationFiles::read(path("a.zhpc"), text));

    QCOMPARE(text, QStringLiteral("one"));
}

void tst_zoHPCConfigurationFiles::bytesThatAreNoTextAreKeptBesideTheFile()
{
    const auto save = [this](const QByteArray& before) {
        put("a.zhpc", before);
        return zoHPCConfigurationFiles().write(path("a.zhpc"), [] { return QStringLiteral("new"); });
    };
    put("a.zhpc", "gr\xf6\xdf");
    const auto rights = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(path("a.zhpc"), rights));
    expectMessage(QtCriticalMsg, QRegularExpression("not UTF-8\\. What it held before .*/a\\.zhpc~\\.$"));
    expectMessage(QtCriticalMsg, QRegularExpression("not UTF-8\\. What it held before .*/a\\.zhpc~2\\.$"));

    QVERIFY(save("gr\xf6\xdf"));
    QVERIFY(save("gr\xf6\xdf")); // kept already
    QVERIFY(save("other \xff"));
    QVERIFY(save("gr\xc3\xb6\xc3\x9f")); // text

    QCOMPARE(contentOf("a.zhpc"), QByteArray("new"));
    QCOMPARE(contentOf("a.zhpc~"), QByteArray("gr\xf6\xdf"));
    QCOMPARE(contentOf("a.zhpc~2"), QByteArray("other \xff"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList({"a.zhpc", "a.zhpc~", "a.zhpc~2"}));
    QCOMPARE(QFileInfo(path("a.zhpc~")).permissions() & 0x7077, rights);
}

// No name is longer than the file's own.
void tst_zoHPCConfigurationFiles::bytesThatCannotBeKeptAreNotOverwritten()
{
    const QByteArray name = QByteArray(250, 'n') + ".zhpc";
    put(name.constData(), "gr\xf6\xdf");
    expectMessage(QtCriticalMsg,
                  QRegularExpression("not UTF-8 and was not overwritten, since they cannot be "
                                     "kept in .*~: File name too long\\. Save under another name"));
    zoHPCConfigurationFiles files;

    QVERIFY(!files.write(path(name.constData()), [] { return QStringLiteral("new"); }));

    QCOMPARE(contentOf(name.constData()), QByteArray("gr\xf6\xdf"));
    QCOMPARE(files.current(), QString());
}

void tst_zoHPCConfigurationFiles::hostThatIsAskedKeepsWhatIsNoText()
{
    put("a.zhpc", "gr\xf6\xdf");
    bool mayWrite = false;
    zoFileWriter::setGuard({[&mayWrite](const QString&) { return mayWrite; }, {}});
    const auto write = [this] {
        return zoHPCConfigurationFiles().write(path("a.zhpc"), [] { return QStringLiteral("new"); });
    };

    QVERIFY(!write());
    QCOMPARE(contentOf("a.zhpc"), QByteArray("gr\xf6\xdf"));
    mayWrite = true;
    QVERIFY(write());

    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("a.zhpc"));
}

void tst_zoHPCConfigurationFiles::missingFileIsReported()
{
    QString text = QStringLiteral("before");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Unable to load cluster config .*none")));

    QVERIFY(!zoHPCConfigurationFiles::read(path("none"), text));

    QCOMPARE(text, QStringLiteral("before"));
}

void tst_zoHPCConfigurationFiles::missingLegacyFileIsEmpty()
{
    QByteArray bytes("before");
    QVERIFY(zoHPCConfigurationFiles::readLegacy(path("none"), bytes));
    QCOMPARE(bytes, QByteArray());
}

void tst_zoHPCConfigurationFiles::untouchedConfigurationIsNotWorthKeeping()
{
    zoHPCConfigurationFiles files;
    files.setUntouched(QStringLiteral("new"));

    QVERIFY(!files.isWorthKeeping(QStringLiteral("new")));
    QVERIFY(!files.isWorthKeeping(QStringLiteral("<cluster version=\"1\">\n <master/>\n</cluster>\n")));
    QVERIFY(files.isWorthKeeping(QStringLiteral("changed")));

    // A file that was opened is worth keeping once it is replaced, changed or not.
    files.setSaved(QStringLiteral("changed"));
    QVERIFY(files.isWorthKeeping(QStringLiteral("changed")));
}

void tst_zoHPCConfigurationFiles::savedConfigurationDiffersFromOthers()
{
    zoHPCConfigurationFiles files;
    files.setUntouched(QStringLiteral("new"));
    QVERIFY(!files.differs(QStringLiteral("new")));

    files.setSaved(QStringLiteral("saved"));

    QVERIFY(!files.differs(QStringLiteral("saved")));
    QVERIFY(files.differs(QStringLiteral("new")));
}

ZO_TEST_MAIN(tst_zoHPCConfigurationFiles)

#include "tst_zoHPCConfigurationFiles.moc"
