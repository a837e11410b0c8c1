#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

// One of two configuration documents that are compared: its root, and the paths of its items.
class zoComparedDocument final
{
public:
    // Tiles and planes that projections generate are taken out of the document: they follow from what is compared,
    // and there may be a hundred thousand.
    explicit zoComparedDocument(const QDomDocument& document);

    QDomElement root() const { return m_document.documentElement(); }
    // Of all items of the tag, in the order of the document.
    QStringList paths(const QString& tag) const { return m_paths.value(tag); }

private:
    QDomDocument m_document;
    QHash<QString, QStringList> m_paths;
};
