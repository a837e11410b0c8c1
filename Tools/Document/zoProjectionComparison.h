#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QHash>
#include <QString>

#include <vector>

class zoComparedDocument;
class zoDifferences;

// What differs between the projections of two configurations: walls, caves and planes.
class zoProjectionComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoProjectionComparison)

public:
    // Differences are added to the list, which is not owned.
    explicit zoProjectionComparison(zoDifferences& differences) : m_differences(differences) {}

    void compare(const zoComparedDocument& before, const zoComparedDocument& after);

private:
    struct Projection
    {
        QString key; // the name, numbered when it is not the first of its kind
        QString path;
        QDomElement element;
    };
    using Projections = std::vector<Projection>;

    static Projections projectionsOf(const zoComparedDocument& document);
    void addRemoved(const Projections& before, const QHash<QString, std::vector<std::size_t>>& gone);
    void compareProjection(const QDomElement& before, const Projection& projection);
    // Whether the corners were told of.
    bool comparePlanes(const QString& label, const QDomElement& before, const Projection& projection);

    zoDifferences& m_differences; // not owned
};
