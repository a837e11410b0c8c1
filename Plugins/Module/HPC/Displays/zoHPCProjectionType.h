#pragma once

#include <QString>

#include <vector>

// A type of projection: one row of the table that documents, dialog, checks, pictures and tools share. To add
// a type or to give one another parameter, change its row.
struct zoHPCProjectionType final
{
    enum class Kind {
        Wall,
        PowerWall,
        Cave,
        Plane,
        Tile,
        Other // any word that is none of the types
    };

    Kind kind;
    const char* value;       // the word in documents
    const char* text;        // in the dialog; translated in the context of zoHPCDisplayGUII
    const char* icon;        // of a row; null keeps the one that the row has
    const char* choiceIcon;  // in the list of types
    const char* overlapUnit; // in the dialog; translated as the text

    // What the panel of the dialog shows.
    bool tilePlace;  // row and column of the tile itself
    bool tileLayout; // rows, columns, overlap
    bool area;
    bool corners;
    bool cave;
    bool distance;
    bool rightOffset;
    bool edges; // blend widths of its own

    bool isInPixels;      // without a size in millimetres
    bool overlapIsLength; // as opposed to pixels, or to nothing

    // Of zoHPCProjectionColumns.
    std::vector<int> columns; // that are saved
    std::vector<int> lengths; // that hold millimetres
    std::vector<int> sizes;   // of which an odd number below 0 turns a generated wall round

    // The types in the order of the dialog.
    static const std::vector<zoHPCProjectionType>& all();
    // The row of Kind::Other for an unknown word: it saves the columns of all types.
    static const zoHPCProjectionType& of(const QString& word);
    static const zoHPCProjectionType& of(Kind kind);
    static QString word(Kind kind) { return QString::fromLatin1(of(kind).value); }
};
