#pragma once

#include "zoHPCTextDelta.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <deque>
#include <functional>

// The steps from one text of a document to the next, to be taken back and taken again. A step holds what differs,
// not the texts; when all together exceed the limit, the oldest go.
class zoHPCHistory final
{
public:
    static constexpr qint64 Limit = 64 * 1024 * 1024; // bytes

    struct Step
    {
        zoHPCTextDelta delta;
        QString name; // what people read, "Delete projection Wall"
        // What was selected and in view before and after it; means nothing here.
        QByteArray placeBefore;
        QByteArray placeAfter;
        // Networks, nodes, projections, displays, windows or viewports come or go with it.
        bool isStructural = false;
    };

    explicit zoHPCHistory(qint64 limit = Limit) : m_limit(limit) {}

    // Begins anew with this text.
    void reset(const QString& text);
    // Where it stands.
    const QString& text() const { return m_text; }

    // The text after another step, which takes the place of those that were taken back. The delta is from
    // text(), and not empty.
    void record(Step step, const QString& text);
    // The last step goes on: it leads to this text now, and has the name that `nameOf` gives. When the text is the
    // one before the step, the step goes. False, and nothing is done, when there is no step or it is closed.
    bool extend(const QString& text, const QByteArray& placeAfter,
                const std::function<QString(const zoHPCTextDelta&)>& nameOf);
    // The text changed by itself: the steps around lead from and to this one from now on.
    void absorb(const QString& text);
    // The last step is complete; so it is after undo and redo.
    void close() { m_isOpen = false; }

    // The step that would be taken back or taken again; null when there is none.
    const Step* undoStep() const;
    const Step* redoStep() const;
    // Each does nothing without such a step; text() follows.
    void undo();
    void redo();

    std::size_t stepCount() const { return m_steps.size(); }
    // Of all steps, in bytes; the text itself comes on top.
    qint64 size() const { return m_size; }

private:
    static qint64 sizeOf(const Step& step);
    void exchange(std::size_t index, zoHPCTextDelta delta);
    void keepLimit();

    qint64 m_limit;
    QString m_text;
    std::deque<Step> m_steps;
    std::size_t m_done = 0; // so many of them lead to the text
    qint64 m_size = 0;
    bool m_isOpen = false;
};
