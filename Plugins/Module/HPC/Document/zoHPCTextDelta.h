#pragma once

#include <QString>

#include <vector>

// What differs between two texts, by whole lines, so that each of them can be made from the other. Takes as much
// memory as the lines that differ.
class zoHPCTextDelta final
{
public:
    // Whole lines that stand in one text and not in the other.
    struct Hunk
    {
        int before = 0; // where they are in the earlier text
        int after = 0;  // and in the later one
        QString removed;
        QString inserted;
    };

    zoHPCTextDelta() = default;

    // In time that grows with the texts, whatever they hold. Not always the fewest lines.
    static zoHPCTextDelta between(const QString& before, const QString& after);

    // Each needs the other text as it was given.
    QString applied(const QString& before) const;
    QString reverted(const QString& after) const;

    bool isEmpty() const { return m_hunks.empty(); }
    const std::vector<Hunk>& hunks() const { return m_hunks; }
    // In bytes.
    qint64 size() const;

private:
    std::vector<Hunk> m_hunks;
};
