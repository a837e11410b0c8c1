#include "zoTestCase.h"

#include <QFile>
#include <QMutex>
#include <QTemporaryDir>

namespace
{
struct Expectation
{
    QtMsgType type;
    QRegularExpression pattern;
};

QMutex s_mutex;
QList<Expectation> s_expected;
QStringList s_unexpected;
QStringList s_messages;
QtMessageHandler s_next = nullptr;

// Noise of the platform, not of the program under test.
bool isPlatformNoise(const QString& text)
{
    static const QRegularExpression noise(
        QStringLiteral("XDG_RUNTIME_DIR|This plugin does not support "
                       "(propagateSizeHints|raise|grabbing|setting window masks)|"
                       "^libpng|could not connect to display"));
    return noise.match(text).hasMatch();
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    {
        const QMutexLocker lock(&s_mutex);
        s_messages << text;
        bool expected = false;
        for (int i = 0; i < s_expected.size() && !expected; ++i) {
            if (s_expected.at(i).type == type && s_expected.at(i).pattern.match(text).hasMatch()) {
                s_expected.removeAt(i);
                expected = true;
            }
        }
        const bool bad = type == QtWarningMsg || type == QtCriticalMsg;
        if (bad && !expected && !isPlatformNoise(text))
            s_unexpected << text;
    }
    if (s_next)
        s_next(type, context, text);
}
} // namespace

zoTestCase::zoTestCase()
{
    // What programs under test remember goes to a folder of this run.
    static const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
}

zoTestCase::~zoTestCase() = default;

void zoTestCase::expectMessage(QtMsgType type, const QRegularExpression& pattern)
{
    const QMutexLocker lock(&s_mutex);
    s_expected.append({type, pattern});
}

QStringList zoTestCase::messages() const
{
    const QMutexLocker lock(&s_mutex);
    return s_messages;
}

void zoTestCase::initTestCase()
{
    // Here and not in the constructor: the test library installs its own handler when it starts.
    s_next = qInstallMessageHandler(collect);
}

void zoTestCase::cleanup()
{
    QStringList unexpected;
    QStringList missing;
    {
        const QMutexLocker lock(&s_mutex);
        unexpected.swap(s_unexpected);
        for (const Expectation& expectation : qAsConst(s_expected))
            missing << expectation.pattern.pattern();
        s_expected.clear();
        s_messages.clear();
    }
    QVERIFY2(unexpected.isEmpty(),
             qPrintable(QStringLiteral("unannounced: ") + unexpected.join(QLatin1Char('\n'))));
    QVERIFY2(missing.isEmpty(),
             qPrintable(QStringLiteral("never logged: ") + missing.join(QLatin1Char('\n'))));
}
