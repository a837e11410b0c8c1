#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

class zoHPCDisplaySetup;
class zoHPCProjectionItem;
class zoHPCTextCheck;
class zoHPCTextItems;
class zoHPCViewportItem;

// The references of viewports to projections, by what the text says: a viewport whose projection there is not has lost
// the name when it was read.
class zoHPCReferences final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCReferences)

public:
    explicit zoHPCReferences(const zoHPCDisplaySetup& displays);

    // Adds a finding for each reference to nothing, and returns what was meant where that can be guessed. Everything that
    // the others may have meant is doubtful.
    QHash<zoHPCViewportItem*, QString> check(zoHPCTextCheck& check, const zoHPCTextItems& items,
                                             const zoHPCDisplaySetup& displays);

private:
    // The projection of the top level that a name begins with; null without one.
    const zoHPCProjectionItem* wallOf(const QString& name) const;
    QString meant(const QString& name, const zoHPCProjectionItem* wall);
    static QString message(const QString& name, const QString& meant, const zoHPCProjectionItem* wall);

    QHash<QString, const zoHPCProjectionItem*> m_walls; // by name
    QStringList m_wallNames;
    QHash<QString, QString> m_meant; // what was found for a name
    int m_comparisons = 0;
};
