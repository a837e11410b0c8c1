#include "zoHPCHistory.h"

#include <utility>

void zoHPCHistory::reset(const QString& text)
{
    m_text = text;
    m_steps.clear();
    m_done = 0;
    m_size = 0;
    m_isOpen = false;
}

void zoHPCHistory::record(Step step, const QString& text)
{
    while (m_steps.size() > m_done) {
        m_size -= sizeOf(m_steps.back());
        m_steps.pop_back();
    }
    m_size += sizeOf(step);
    m_steps.push_back(std::move(step));
    m_done = m_steps.size();
    m_text = text;
    m_isOpen = true;
    keepLimit();
}

bool zoHPCHistory::extend(const QString& text, const QByteArray& placeAfter,
                          const std::function<QString(const zoHPCTextDelta&)>& nameOf)
{
    if (!m_isOpen || m_done == 0)
        return false;
    Step& step = m_steps.back();
    zoHPCTextDelta delta = zoHPCTextDelta::between(step.delta.reverted(m_text), text);
    m_text = text;
    if (delta.isEmpty()) {
        m_size -= sizeOf(step);
        m_steps.pop_back();
        --m_done;
        m_isOpen = false;
        return true;
    }
    m_size -= sizeOf(step);
    step.placeAfter = placeAfter;
    step.delta = std::move(delta);
    step.name = nameOf(step.delta);
    m_size += sizeOf(step);
    keepLimit();
    return true;
}

void zoHPCHistory::absorb(const QString& text)
{
    if (m_done > 0)
        exchange(m_done - 1, zoHPCTextDelta::between(m_steps[m_done - 1].delta.reverted(m_text), text));
    if (m_done < m_steps.size())
        exchange(m_done, zoHPCTextDelta::between(text, m_steps[m_done].delta.applied(m_text)));
    m_text = text;
    keepLimit();
}

const zoHPCHistory::Step* zoHPCHistory::undoStep() const
{
    return m_done > 0 ? &m_steps[m_done - 1] : nullptr;
}

const zoHPCHistory::Step* zoHPCHistory::redoStep() const
{
    return m_done < m_steps.size() ? &m_steps[m_done] : nullptr;
}

void zoHPCHistory::undo()
{
    if (m_done == 0)
        return;
    m_text = m_steps[--m_done].delta.reverted(m_text);
    m_isOpen = false;
}

void zoHPCHistory::redo()
{
    if (m_done == m_steps.size())
        return;
    m_text = m_steps[m_done++].delta.applied(m_text);
    m_isOpen = false;
}

qint64 zoHPCHistory::sizeOf(const Step& step)
{
    return qint64(sizeof(Step)) + step.delta.size() + qint64(sizeof(QChar)) * step.name.size() +
           step.placeBefore.size() + step.placeAfter.size();
}

void zoHPCHistory::exchange(std::size_t index, zoHPCTextDelta delta)
{
    Step& step = m_steps[index];
    m_size -= sizeOf(step);
    step.delta = std::move(delta);
    m_size += sizeOf(step);
}

// Of what was done the oldest first; of what was undone, which only an absorbed change lets grow, the last.
void zoHPCHistory::keepLimit()
{
    while (m_size > m_limit && !m_steps.empty()) {
        if (m_done > 0) {
            m_size -= sizeOf(m_steps.front());
            m_steps.pop_front();
            --m_done;
        } else {
            m_size -= sizeOf(m_steps.back());
            m_steps.pop_back();
        }
    }
}
