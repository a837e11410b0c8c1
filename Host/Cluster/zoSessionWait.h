#pragma once

#include <functional>

class QEventLoop;

// The one place where a service handles events while it waits. A wait ends when its claim is true, when its time is
// over, when there is nothing to wait for any more, and at once with the application or with the object itself.
class zoSessionWait final
{
public:
    enum class Outcome { Done, TimedOut, Ended, Destroyed };

    // `isOver` tells whether there is anything to wait for; asked whenever the wait is woken.
    explicit zoSessionWait(std::function<bool()> isOver);
    ~zoSessionWait(); // ends a wait: it returns Destroyed

    zoSessionWait(const zoSessionWait&) = delete;
    zoSessionWait& operator=(const zoSessionWait&) = delete;

    // Waits for at most `limit` milliseconds. A wait inside a wait is Ended at once. After Destroyed nothing of the
    // owner may be touched.
    Outcome until(const std::function<bool()>& done, int limit);
    // To be called whenever something may have changed.
    void wake();
    // Whether the application ended a wait since this was asked last.
    bool takeQuit();

private:
    std::function<bool()> m_isOver;
    const std::function<bool()>* m_done = nullptr;
    QEventLoop* m_loop = nullptr;
    bool* m_isGone = nullptr;
    bool m_hasQuit = false;
};
