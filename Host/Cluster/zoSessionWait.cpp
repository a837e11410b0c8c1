#include "zoSessionWait.h"

#include <QEventLoop>
#include <QTimer>

namespace
{
// What a loop ends with. The application's own end comes as 0, or as -1 where no loop may run any more.
constexpr int s_wakeCode = 10;
constexpr int s_timeoutCode = 11;
} // namespace

zoSessionWait::zoSessionWait(std::function<bool()> isOver) : m_isOver(std::move(isOver)) {}

zoSessionWait::~zoSessionWait()
{
    if (m_loop == nullptr)
        return;
    *m_isGone = true;
    m_loop->exit(s_wakeCode);
}

zoSessionWait::Outcome zoSessionWait::until(const std::function<bool()>& done, int limit)
{
    if (m_loop != nullptr || m_hasQuit || m_isOver())
        return Outcome::Ended;
    if (done())
        return Outcome::Done;
    bool isGone = false;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&loop] { loop.exit(s_timeoutCode); });
    timer.start(limit);
    m_loop = &loop;
    m_done = &done;
    m_isGone = &isGone;
    const int code = loop.exec();
    if (isGone)
        return Outcome::Destroyed;
    m_loop = nullptr;
    m_done = nullptr;
    m_isGone = nullptr;
    m_hasQuit = m_hasQuit || (code != s_wakeCode && code != s_timeoutCode);
    if (m_hasQuit || m_isOver())
        return Outcome::Ended;
    return done() ? Outcome::Done : Outcome::TimedOut;
}

void zoSessionWait::wake()
{
    if (m_loop != nullptr && (m_isOver() || (*m_done)()))
        m_loop->exit(s_wakeCode);
}

bool zoSessionWait::takeQuit()
{
    const bool hasQuit = m_hasQuit;
    m_hasQuit = false;
    return hasQuit;
}
