#include "zoTestCase.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace
{
constexpr int StepTimeoutMs = 200000;

struct Outcome
{
    bool isGood = false;
    QByteArray output; // both streams
};

Outcome run(const QString& program, const QStringList& arguments, const QString& folder = QString())
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (!folder.isEmpty())
        process.setWorkingDirectory(folder);
    process.start(program, arguments, QIODevice::ReadOnly);
    Outcome outcome;
    outcome.isGood = process.waitForFinished(StepTimeoutMs) && process.exitStatus() == QProcess::NormalExit &&
                     process.exitCode() == 0;
    outcome.output = process.readAll();
    return outcome;
}
} // namespace

#define VERIFY_RUN(outcome) QVERIFY2((outcome).isGood, (outcome).output.constData())

// The development files as an author of modules has them: installed, and then moved to another folder.
class tst_zoSdk final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();

    void exampleIsBuiltAndLoaded();
    void assistantIsBuiltAndLoaded();
    void otherMetadataAreInTheNextBuild();
    void everyHeaderIsComplete();
    void coreReadsAConfiguration();
    void packageConfigFindsTheKernel();
    void hostWorksWithoutTheAssistant();

private:
    // Builds the sources in a folder of this name against the installed files.
    Outcome build(const QString& sources, const QString& name, const QStringList& options = {}) const;
    bool write(const QString& name, const QByteArray& text) const;
    QString prefix() const { return m_directory.filePath(QStringLiteral("moved there")); }
    QString file(const QString& pattern) const; // the installed file that a pattern names

    QTemporaryDir m_directory;
};

void tst_zoSdk::initTestCase()
{
    zoTestCase::initTestCase();
    const QString first = m_directory.filePath(QStringLiteral("first"));

    VERIFY_RUN(run(QStringLiteral(ZO_CMAKE), {QStringLiteral("--install"), QStringLiteral(ZO_BUILD_DIR),
                                              QStringLiteral("--prefix"), first}));

    QVERIFY(QDir().rename(first, prefix()));
}

Outcome tst_zoSdk::build(const QString& sources, const QString& name, const QStringList& options) const
{
    const QString folder = m_directory.filePath(name);
    const Outcome configured =
        run(QStringLiteral(ZO_CMAKE),
            QStringList{QStringLiteral("-G"), QStringLiteral("Ninja"), QStringLiteral("-S"), sources,
                        QStringLiteral("-B"), folder, QStringLiteral("-DCMAKE_PREFIX_PATH=") + prefix(),
                        QStringLiteral("-DCMAKE_CXX_FLAGS=" ZO_SDK_FLAGS),
                        QStringLiteral("-DCMAKE_MODULE_LINKER_FLAGS=" ZO_SDK_FLAGS),
                        QStringLiteral("-DCMAKE_CXX_COMPILER=" ZO_CXX)} +
                options);
    if (!configured.isGood)
        return configured;
    return run(QStringLiteral(ZO_CMAKE), {QStringLiteral("--build"), folder});
}

bool tst_zoSdk::write(const QString& name, const QByteArray& text) const
{
    const QString path = m_directory.filePath(name);
    QFile out(path);
    return QDir().mkpath(QFileInfo(path).path()) && out.open(QIODevice::WriteOnly) &&
           out.write(text) == text.size();
}

QString tst_zoSdk::file(const QString& pattern) const
{
    QDirIterator files(prefix(), {pattern}, QDir::Files, QDirIterator::Subdirectories);
    return files.hasNext() ? files.next() : QString();
}

void tst_zoSdk::exampleIsBuiltAndLoaded()
{
    VERIFY_RUN(build(QStringLiteral(ZO_EXAMPLE_DIR "/hello-module"), QStringLiteral("hello")));
    qputenv("XDG_CONFIG_HOME", m_directory.path().toUtf8());
    qputenv("XDG_DATA_HOME", m_directory.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", m_directory.path().toUtf8());
    const QString picture = m_directory.filePath(QStringLiteral("hello.png"));

    const Outcome host =
        run(file(QStringLiteral("zohost")),
            {QStringLiteral("--engine"), QStringLiteral("local"), QStringLiteral("--non-interactive"),
             QStringLiteral("--module"), m_directory.filePath(QStringLiteral("hello/libhello.so")),
             QStringLiteral("--screenshot"), picture});

    VERIFY_RUN(host);
    QVERIFY2(host.output.contains("libhello.so loaded"), host.output.constData());
    QVERIFY2(!host.output.contains("Unable"), host.output.constData());
    QVERIFY(QFile::exists(picture));
}

// The module of this tree that is made like those of others: from its own folder alone, copied elsewhere. As one unit, since
// the machine has better to do.
void tst_zoSdk::assistantIsBuiltAndLoaded()
{
    const QString sources = m_directory.filePath(QStringLiteral("assistant"));
    QVERIFY(QDir().mkpath(sources));
    const QFileInfoList files = QDir(QStringLiteral(ZO_ASSISTANT_DIR)).entryInfoList(QDir::Files);
    QVERIFY(files.size() > 10);
    for (const QFileInfo& entry : files)
        QVERIFY(QFile::copy(entry.filePath(), sources + QLatin1Char('/') + entry.fileName()));

    VERIFY_RUN(build(
        sources, QStringLiteral("assistant-build"),
        {QStringLiteral("-DCMAKE_UNITY_BUILD=ON"), QStringLiteral("-DCMAKE_UNITY_BUILD_BATCH_SIZE=0")}));
    const Outcome host =
        run(file(QStringLiteral("zohost")),
            {QStringLiteral("--engine"), QStringLiteral("local"), QStringLiteral("--non-interactive"),
             QStringLiteral("--module"), file(QStringLiteral("libzoHPC.so")), QStringLiteral("--module"),
             m_directory.filePath(QStringLiteral("assistant-build/libzoAssistant.so")),
             QStringLiteral("--screenshot"), m_directory.filePath(QStringLiteral("assistant.png"))});

    VERIFY_RUN(host);
    QVERIFY2(host.output.contains("assistant-build/libzoAssistant.so loaded"), host.output.constData());
    QVERIFY2(!host.output.contains("Unable"), host.output.constData());
}

void tst_zoSdk::otherMetadataAreInTheNextBuild()
{
    QVERIFY(write(QStringLiteral("small/small.cpp"), "extern \"C\" void initPlugin() {}\n"));
    QVERIFY(write(QStringLiteral("small/CMakeLists.txt"), R"(cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES CXX)
find_package(zo REQUIRED)
add_library(small MODULE small.cpp)
target_link_libraries(small PRIVATE Zo::Kernel)
zo_module_metadata(small NAME Small VERSION ${SMALL_VERSION} LICENCE Apache-2.0 INTERFACE 99)
)"));
    const QString sources = m_directory.filePath(QStringLiteral("small"));
    const auto said = [this, &sources](const QString& version) {
        const Outcome built =
            build(sources, QStringLiteral("small-build"), {QStringLiteral("-DSMALL_VERSION=") + version});
        if (!built.isGood)
            return built.output;
        return run(file(QStringLiteral("zohost")),
                   {QStringLiteral("--engine"), QStringLiteral("local"), QStringLiteral("--non-interactive"),
                    QStringLiteral("--module"),
                    m_directory.filePath(QStringLiteral("small-build/libsmall.so"))})
            .output;
    };

    const QByteArray first = said(QStringLiteral("1.0"));
    const QByteArray second = said(QStringLiteral("1.1"));

    QVERIFY2(first.contains("Small 1.0 needs a newer host"), first.constData());
    QVERIFY2(second.contains("Small 1.1 needs a newer host"), second.constData());
}

void tst_zoSdk::everyHeaderIsComplete()
{
    QByteArray includes;
    int count = 0;
    QDirIterator headers(prefix() + QStringLiteral("/include"), {QStringLiteral("*.h")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        includes += "#include <" + QFileInfo(headers.next()).fileName().toUtf8() + ">\n";
        ++count;
    }
    QVERIFY(count > 100);
    QVERIFY(write(QStringLiteral("headers/all.cpp"), includes));
    QVERIFY(write(QStringLiteral("headers/CMakeLists.txt"), R"(cmake_minimum_required(VERSION 3.25)
project(headers LANGUAGES CXX)
find_package(zo REQUIRED)
add_library(headers OBJECT all.cpp)
target_link_libraries(headers PRIVATE Zo::HPCCore Zo::Kernel)
)"));

    VERIFY_RUN(build(m_directory.filePath(QStringLiteral("headers")), QStringLiteral("headers-build")));
}

void tst_zoSdk::coreReadsAConfiguration()
{
    QVERIFY(write(QStringLiteral("core/main.cpp"), R"(#include <zoHPCConfiguration.h>
#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <cstdio>
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QFile file(QString::fromLocal8Bit(argv[1]));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return 1;
    zoHPCConfiguration configuration;
    configuration.read(document);
    std::fputs(configuration.text().toUtf8().constData(), stdout);
    return 0;
}
)"));
    QVERIFY(write(QStringLiteral("core/CMakeLists.txt"), R"(cmake_minimum_required(VERSION 3.25)
project(core LANGUAGES CXX)
find_package(zo REQUIRED)
add_executable(core main.cpp)
target_link_libraries(core PRIVATE Zo::HPCCore)
)"));
    const QString sample = file(QStringLiteral("powerwall-2x2.zhpc"));

    VERIFY_RUN(build(m_directory.filePath(QStringLiteral("core")), QStringLiteral("core-build")));
    const Outcome program = run(m_directory.filePath(QStringLiteral("core-build/core")), {sample});

    VERIFY_RUN(program);
    QFile written(sample);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(program.output, written.readAll());
}

void tst_zoSdk::packageConfigFindsTheKernel()
{
    QVERIFY(write(QStringLiteral("plain/main.cpp"), R"(#include <zoPlatform.h>
#include <cstdio>
int main()
{
    std::puts(zoPlatform::getDataDir().c_str());
    return 0;
}
)"));
    const QString description = file(QStringLiteral("zo-kernel.pc"));
    QVERIFY(!description.isEmpty());
    qputenv("PKG_CONFIG_PATH", QFileInfo(description).path().toUtf8());
    // eval: blanks of the folder are escaped in what pkg-config says.
    const QString command =
        QStringLiteral("eval \"" ZO_CXX " " ZO_SDK_FLAGS " -fPIC -std=c++17 main.cpp -o main -Wl,-rpath,'$1' "
                       "$(pkg-config --cflags --libs zo-kernel)\" && ./main");

    const Outcome program = run(QStringLiteral("sh"),
                                {QStringLiteral("-c"), command, QStringLiteral("sh"),
                                 QFileInfo(file(QStringLiteral("libzoKernel.so"))).path()},
                                m_directory.filePath(QStringLiteral("plain")));

    VERIFY_RUN(program);
    // The library's own data, in the folder that it was moved to.
    const QDir samples = QFileInfo(file(QStringLiteral("powerwall-2x2.zhpc"))).dir();
    QCOMPARE(QString::fromUtf8(program.output).trimmed(),
             QDir::cleanPath(samples.filePath(QStringLiteral(".."))));
}

// The last one, since it takes a file away.
void tst_zoSdk::hostWorksWithoutTheAssistant()
{
    const QStringList arguments{QStringLiteral("--engine"),
                                QStringLiteral("local"),
                                QStringLiteral("--non-interactive"),
                                QStringLiteral("--screenshot"),
                                m_directory.filePath(QStringLiteral("alone.png")),
                                file(QStringLiteral("powerwall-2x2.zhpc"))};
    const Outcome with = run(file(QStringLiteral("zohost")), arguments);
    VERIFY_RUN(with);
    QVERIFY2(with.output.contains("libzoAssistant.so loaded"), with.output.constData());
    QVERIFY(QFile::remove(file(QStringLiteral("libzoAssistant.so"))));

    const Outcome without = run(file(QStringLiteral("zohost")), arguments);

    VERIFY_RUN(without);
    QVERIFY2(without.output.contains("libzoHPC.so loaded"), without.output.constData());
    QVERIFY2(!without.output.contains("Assistant"), without.output.constData());
    QVERIFY2(!without.output.contains("Unable"), without.output.constData());
}

ZO_TEST_MAIN(tst_zoSdk)
#include "tst_zoSdk.moc"
