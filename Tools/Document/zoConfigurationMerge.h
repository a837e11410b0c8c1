#pragma once

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QStringList>

#include <vector>

// Two configurations that came from one, as one that has the changes of both. Items are the same in all three when
// their names are, windows when they show the same or stand in the same place. Where both changed one value, or one
// removed what the other changed, ours stays, and a conflict says so.
class zoConfigurationMerge final
{
    Q_DECLARE_TR_FUNCTIONS(zoConfigurationMerge)

public:
    // Networks behind gateways are merged this deep.
    static constexpr int Deepest = 200; // elements

    // The documents must be canonical.
    zoConfigurationMerge(const QDomDocument& base, const QDomDocument& ours, const QDomDocument& theirs);

    // Whether all of them are as deep as can be merged; otherwise there is no result.
    bool isPossible() const { return m_isPossible; }
    QDomDocument result() const { return m_result; }
    // "PATH: what", by the paths of our side or, for what is new, of theirs.
    const QStringList& conflicts() const { return m_conflicts; }

private:
    using Elements = std::vector<QDomElement>;
    struct Three
    {
        QDomElement base; // any may be null
        QDomElement ours;
        QDomElement theirs;
        int baseRow = -1; // among those of its kind
        int theirsRow = -1;
    };

    QDomElement merge(const Three& three, const QString& path);
    void mergeAttributes(const Three& three, const QString& path, QDomElement& result);
    void mergeChildren(const Three& three, const QString& path, QDomElement& result);
    std::vector<Three> aligned(const Three& three, const QString& tag) const;
    // Null for what is left out.
    QDomElement mergeOne(const Three& three, const QString& path);
    void orderLikeTheirs(std::vector<Three>& items, const QString& path, const QString& tag);
    void conflict(const QString& path, const QString& text);

    QDomDocument m_result;
    QStringList m_conflicts;
    bool m_isPossible = true;
};
