#pragma once

#include "zoHPCConfiguration.h"
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
    // The same with all problems of the file. Afterwards the setup is what the file was meant to be, as far as that can
    // be guessed.
    bool readFile(const QString& fileName, std::vector<zoHPCDocumentProblems::Problem>& problems);
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
    // The same without the values of tiles and planes that projections generate.
    QString textWithNamesOfTiles() const { return m_configuration.textWithNamesOfTiles(); }
    QDomDocument documentWithNamesOfTiles() const;

private:
    bool readText(const QString& fileName, QDomDocument& document);

    zoTextFile::Content m_file;
    zoHPCConfiguration m_configuration;
};
