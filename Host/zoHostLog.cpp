#include "zoHostLog.h"

#include <QDebug>

#include <cstdio>
#include <cstring>

namespace
{
constexpr char s_category[] = "zo"; // of zoLog

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

void zoHostLog::warn(const QString& text)
{
    QMessageLogger(nullptr, 0, nullptr, s_category).warning().noquote() << text;
}

void zoHostLog::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtWarningMsg && isPlatformNoise(text))
        return;
    const QByteArray line = qFormatLogMessage(type, context, text).toUtf8();
    std::fprintf(stderr, "%s\n", line.constData());
    std::fflush(stderr);
    if (context.category == nullptr || std::strcmp(context.category, s_category) != 0)
        return;
    // A deep copy: the text may lie in the data of a module that is unloaded before the panel forgets it.
    emit s_instance->messageLogged(type, QString(text.constData(), text.size()));
}
