#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QString>

#include <vector>

class zoDifferences;

// What differs between the projections of two configurations: walls, caves and planes.
class zoProjectionComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoProjectionComparison)

public:
    // Differences are added to the list, which is not owned.
    explicit zoProjectionComparison(zoDifferences& differences) : m_differences(differences) {}

    // Of two root elements.
    void compare(const QDomElement& before, const QDomElement& after);

private:
    struct Projection
    {
        QString key; // the name, numbered when it is not the first of its kind
        QDomElement element;
    };
    using Projections = std::vector<Projection>;

    static Projections projectionsOf(const QDomElement& root);
    void compareProjection(const QDomElement& before, const QDomElement& after);
    // Whether the corners were told of.
    bool comparePlanes(const QString& label, const QDomElement& before, const QDomElement& after);

    zoDifferences& m_differences; // not owned
};
