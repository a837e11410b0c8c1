#include "zoHostSignals.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{
// A signal handler may do next to nothing: it writes a byte, and the event loop reads it.
int s_writeEnd = -1;

void handle(int)
{
    const char byte = 1;
    const ssize_t written = write(s_writeEnd, &byte, 1);
    Q_UNUSED(written)
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    // A terminal that is closed; whoever started the host to outlive it has it ignored.
    struct sigaction before = {};
    if (sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
        sigaction(SIGHUP, &action, nullptr);
}
} // namespace

zoHostSignals::zoHostSignals(QObject* parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) == -1)
        return;
    m_readEnd = ends[0];
    s_writeEnd = ends[1];
    auto* notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (read(m_readEnd, &byte, 1) == 1) {
        }
        emit terminationRequested();
    });
    setHandler(handle);
}

bool zoHostSignals::eventFilter(QObject* watched, QEvent* event)
{
    // Sent by session managers alone: what ends the host calls exit(). With Qt 6 quit() would send one, too.
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return QObject::eventFilter(watched, event);
    emit terminationRequested();
    return true;
}

zoHostSignals::~zoHostSignals()
{
    if (m_readEnd == -1)
        return;
    setHandler(SIG_DFL);
    close(s_writeEnd);
    close(m_readEnd);
    s_writeEnd = -1;
}
