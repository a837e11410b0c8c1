#include "zoTestCase.h"

#include <zoHostRecentFiles.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// The list of the files that were opened last.
class tst_zoHostRecentFiles final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void newestComesFirst();
    void fileIsListedOnce();
    void sameFileUnderAnotherNameIsListedOnce();
    void onlyTheLastTenStay();
    void listOutlivesTheHost();
    void hostsSideBySideShareTheList();
    void missingFileStaysUntilItIsRemoved();
    void namesBecomeAbsolute();
    void emptyNameIsIgnored();
    void clearEmptiesTheList();
    void nothingIsAnnouncedWhenNothingChanged();
    void textsAreCopied();

private:
    QString name(const QString& file) const { return m_directory->filePath(file); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostRecentFiles> m_recent;
};

void tst_zoHostRecentFiles::init()
{
    m_recent.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(name("settings.ini"), QSettings::IniFormat);
    m_recent = std::make_unique<zoHostRecentFiles>(m_settings.get());
}

void tst_zoHostRecentFiles::newestComesFirst()
{
    m_recent->add(name("a.zhpc"));
    m_recent->add(name("b.zhpc"));

    QCOMPARE(m_recent->files(), QStringList({name("b.zhpc"), name("a.zhpc")}));
}

void tst_zoHostRecentFiles::fileIsListedOnce()
{
    m_recent->add(name("a.zhpc"));
    m_recent->add(name("b.zhpc"));
    m_recent->add(name("a.zhpc"));

    QCOMPARE(m_recent->files(), QStringList({name("a.zhpc"), name("b.zhpc")}));
}

void tst_zoHostRecentFiles::sameFileUnderAnotherNameIsListedOnce()
{
    QVERIFY(QDir(m_directory->path()).mkdir("walls"));
    QFile file(name("walls/a.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(name("walls"), name("link")));

    m_recent->add(name("walls/a.zhpc"));
    m_recent->add(name("link/a.zhpc"));

    QCOMPARE(m_recent->files(), QStringList(name("link/a.zhpc")));
}

void tst_zoHostRecentFiles::onlyTheLastTenStay()
{
    for (int i = 0; i < 12; ++i)
        m_recent->add(name(QStringLiteral("%1.zhpc").arg(i)));

    QCOMPARE(m_recent->files().size(), 10);
    QCOMPARE(m_recent->files().constFirst(), name("11.zhpc"));
    QCOMPARE(m_recent->files().constLast(), name("2.zhpc"));
}

void tst_zoHostRecentFiles::listOutlivesTheHost()
{
    m_recent->add(name("a.zhpc"));
    m_recent->add(name("b.zhpc"));
    m_settings = std::make_unique<QSettings>(name("settings.ini"), QSettings::IniFormat);

    const zoHostRecentFiles next(m_settings.get());

    QCOMPARE(next.files(), QStringList({name("b.zhpc"), name("a.zhpc")}));
}

void tst_zoHostRecentFiles::hostsSideBySideShareTheList()
{
    m_recent->add(name("a.zhpc"));
    // As another process writes it.
    QFile file(name("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Recent]\nFiles=/other.zhpc, " + name("a.zhpc").toUtf8() + "\n");
    file.close();

    m_recent->add(name("b.zhpc"));

    QCOMPARE(m_recent->files(), QStringList({name("b.zhpc"), "/other.zhpc", name("a.zhpc")}));
}

void tst_zoHostRecentFiles::missingFileStaysUntilItIsRemoved()
{
    m_recent->add(name("gone.zhpc"));
    m_recent->add(name("b.zhpc"));
    QVERIFY(m_recent->files().contains(name("gone.zhpc")));

    m_recent->remove(name("gone.zhpc"));

    QCOMPARE(m_recent->files(), QStringList(name("b.zhpc")));
}

void tst_zoHostRecentFiles::namesBecomeAbsolute()
{
    m_recent->add("a.zhpc");

    QCOMPARE(m_recent->files(), QStringList(QDir::current().absoluteFilePath("a.zhpc")));
}

void tst_zoHostRecentFiles::emptyNameIsIgnored()
{
    m_recent->add(QString());

    QCOMPARE(m_recent->files(), QStringList());
}

void tst_zoHostRecentFiles::clearEmptiesTheList()
{
    m_recent->add(name("a.zhpc"));
    QSignalSpy changed(m_recent.get(), &zoHostRecentFiles::changed);

    m_recent->clear();

    QCOMPARE(m_recent->files(), QStringList());
    QCOMPARE(changed.count(), 1);
}

void tst_zoHostRecentFiles::nothingIsAnnouncedWhenNothingChanged()
{
    m_recent->add(name("a.zhpc"));
    QSignalSpy changed(m_recent.get(), &zoHostRecentFiles::changed);

    m_recent->add(name("a.zhpc"));
    m_recent->remove(name("b.zhpc"));

    QCOMPARE(changed.count(), 0);
}

void tst_zoHostRecentFiles::textsAreCopied()
{
    QString file = name("a.zhpc");
    const QString before = name("a.zhpc");

    m_recent->add(QString::fromRawData(file.constData(), file.size()));
    file.fill(QLatin1Char('x'));

    QCOMPARE(m_recent->files(), QStringList(before));
}

ZO_TEST_MAIN(tst_zoHostRecentFiles)
#include "tst_zoHostRecentFiles.moc"
