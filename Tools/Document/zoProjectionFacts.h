#pragma once

#include "zoHPCLayout.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QSizeF>
#include <QString>

#include <vector>

// How large the projections of the top level are, in millimetres and in pixels, in the words of a person.
class zoProjectionFacts final
{
    Q_DECLARE_TR_FUNCTIONS(zoProjectionFacts)

public:
    struct Projection
    {
        QString name;
        QString type; // the word of documents
        int columns = 1;
        int rows = 1;
        double distance = 0.0;             // mm; 0 where the type has none
        double depth = 0.0;                // mm, of a cave
        QSizeF size;                       // mm, of all of it; empty for a wall that has pixels alone
        QSizeF tile;                       // mm
        QSizeF overlap = QSizeF(0.0, 0.0); // mm; pixels for a wall that has pixels alone
        QSizeF pixels;                     // of all of it; empty for a cave, and when no viewport shows it
        QSizeF tilePixels;
        bool isBlended = false;
        double turn = 0.0; // degrees from column to column of a wall of planes

        // "Wall: power wall, 2 x 2 tiles, 3600 x 2160 mm ..."
        QString text() const;
        QJsonObject json() const;
    };

    zoProjectionFacts() = delete;

    static std::vector<Projection> read(const zoHPCLayout& layout);
    // The same with the planes of a curved wall as one, which has its size unrolled into a plane.
    static std::vector<Projection> readWalls(const zoHPCLayout& layout);
};
