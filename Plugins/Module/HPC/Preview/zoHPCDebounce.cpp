#include "zoHPCDebounce.h"

zoHPCDebounce::zoHPCDebounce(QObject* parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(Interval);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (!m_isQuick)
            return;
        m_isQuick = false;
        emit settled();
    });
}

zoHPCDebounce::~zoHPCDebounce() = default;

void zoHPCDebounce::note()
{
    m_isQuick = m_timer.isActive();
    m_timer.start();
}

void zoHPCDebounce::settle()
{
    m_timer.stop();
    m_isQuick = false;
}
