#include "zoHostLog.h"

#include <cstdio>

namespace
{
// The platform without a display says so of every window; nobody can do anything about it.
bool isPlatformNoise(const QString& text)
{
    return text.startsWith(QLatin1String("This plugin does not support "));
}
} // namespace

zoHostLog* zoHostLog::s_instance = nullptr;

zoHostLog::zoHostLog(QObject* parent) : QObject(parent)
{
    Q_ASSERT(s_instance == nullptr);
    s_instance = this;
    m_previous = qInstallMessageHandler(handle);
}

zoHostLog::~zoHostLog()
{
    qInstallMessageHandler(m_previous);
    s_instance = nullptr;
}

void zoHostLog::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtWarningMsg && isPlatformNoise(text))
        return;
    const QByteArray line = qFormatLogMessage(type, context, text).toUtf8();
    std::fprintf(stderr, "%s\n", line.constData());
    std::fflush(stderr);
    // A deep copy: the text may lie in the data of a module that is unloaded before the panel forgets it.
    emit s_instance->messageLogged(type, QString(text.constData(), text.size()));
}
