#pragma once

#include "zoHPCConfiguration.h"
#include "zoHPCDocumentLosses.h"
#include "zoHPCDocumentProblems.h"
#include "zoTextFile.h"

#include <QDomDocument>
#include <QString>

#include <vector>

// A configuration that a command reads from a file: what it holds and writes is what the cluster window would.
class zoClusterSetup final
{
public:
    // Reads a configuration file; prints an error and returns false when it holds none.
    bool readFile(const QString& fileName);
    // The same for commands that look at no tile: only those that viewports or the file itself name are there.
    bool readOutline(const QString& fileName);
    // The same with all problems of the file. Afterwards the setup is what the file was meant to be, as far as that can
    // be guessed.
    bool readFile(const QString& fileName, std::vector<zoHPCDocumentProblems::Problem>& problems);
    // Whether anything was guessed then; without, the setup is what the file says.
    bool hasGuessed() const { return m_hasGuessed; }
    // Reads a document that is known to be good.
    void readDocument(QDomDocument& document);

    // The text that was read, and the file.
    const QString& source() const { return m_file.text; }
    const zoTextFile::Content& file() const { return m_file; }

    zoHPCHostTree& hosts() { return m_configuration.hosts(); }
    zoHPCDisplaySetup& displays() { return m_configuration.displays(); }

    // Everything in canonical form. A hosts file that the configuration names is not read.
    QDomDocument document() const { return m_configuration.document(); }
    QString text() const { return m_configuration.text(); }
    // The same for readers, by default with no more of tiles than names and types.
    QString outline(zoHPCDocumentText::Tiles tiles = zoHPCDocumentText::Tiles::Outline) const
    {
        return m_configuration.outline(tiles);
    }
    QDomDocument outlineDocument(zoHPCDocumentText::Tiles tiles = zoHPCDocumentText::Tiles::Outline) const;
    // A tile or plane as the document has it, by its place below its projection, and the place of that among all
    // projections.
    QDomElement tile(int projection, int place);

    // What the canonical text loses of the file; but for what stands behind a NUL.
    QVector<zoHPCDocumentLosses::Loss> losses() const;

private:
    bool readText(const QString& fileName, QDomDocument& document);

    zoTextFile::Content m_file;
    zoHPCConfiguration m_configuration;
    bool m_hasGuessed = false;
    QDomDocument m_tiles; // to which elements of tiles belong; holds none of them
};
