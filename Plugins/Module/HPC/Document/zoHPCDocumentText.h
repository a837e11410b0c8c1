#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>

class QDomDocument;
class QDomElement;
class zoHPCDisplaySetup;
class zoHPCDocumentWriter;

// The text form of configuration documents: what files, the cluster service and the text dialog hold.
class zoHPCDocumentText final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCDocumentText)

public:
    enum class EmptyAttributes { OmitInDisplays, Keep };
    // Tiles and planes that projections generate: as files have them, their names and types alone, or none.
    enum class Tiles { Whole, Outline, None };

    // Why and where a text was refused; line and column from 1.
    struct Refusal
    {
        int line = 1;
        int column = 1;
        QString reason;
    };

    zoHPCDocumentText() = delete;

    // The text of a document in the form of QDomDocument::toString(1), with attributes in a fixed order, so
    // that the same content has the same bytes in every process: "version" before "booking" on the root, in
    // the sections the order that zoHPCHostsSection and zoHPCDisplaySetup give; whatever has no such place
    // follows sorted. Characters that XML cannot hold, attributes whose name is no XML name, and empty
    // attributes of the display section (which readers take for missing ones) are left out; `emptyAttributes`
    // can keep the last.
    static QString toText(const QDomDocument& document,
                          EmptyAttributes emptyAttributes = EmptyAttributes::OmitInDisplays);
    // The same for a document that has not all: into each element, before its children, what `writeInto` writes.
    static QString
    toText(const QDomDocument& document, EmptyAttributes emptyAttributes,
           const std::function<void(const QDomElement& element, zoHPCDocumentWriter& writer)>& writeInto);

    // Projections and displays in the same form, into the element that the writer has open.
    static void appendDisplays(const zoHPCDisplaySetup& displays, Tiles tiles, zoHPCDocumentWriter& writer);

    // Reads a text into a fresh document. A text that is not well-formed, is nested deeper than
    // maximumDepth() or expands its entities without bound gives an empty document, false, and an error in
    // the log with line, column and reason. Empty text gives an empty document in silence, and false.
    static bool parse(const QString& text, QDomDocument& document);
    // The same without the log.
    static bool parse(const QString& text, QDomDocument& document, Refusal& refusal);

    // The deepest nesting of elements that is read, the same in every process.
    static int maximumDepth();
};
