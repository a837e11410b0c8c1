#pragma once

#include "zoHPCConfigurationFiles.h"

#include <QCoreApplication>
#include <QVariant>

class QWidget;
class zoFileText;
class zoHPCConfigConverter;

// What the window lets its host know of its files: properties that are set and taken away again at once. A host that
// hears of none misses nothing that it had before.
class zoHPCWindowNotes final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCWindowNotes)

public:
    // The text that is about to go.
    static constexpr char Replaced[] = "replacedConfiguration";
    // Absolute names of files.
    static constexpr char Read[] = "readFile";
    static constexpr char Saved[] = "savedFile";
    // Lists of texts: the file and the reason; for the second also "logged" when the log has it already.
    static constexpr char NotUnderstood[] = "fileNotUnderstood";
    static constexpr char NotSaved[] = "fileNotSaved";
    // The file, then what a person should look at in what became of it, one line each.
    static constexpr char Imported[] = "importedFile";

    // Of a long list of remarks only the first ones, and how many more there are.
    static constexpr int MostRemarks = 50;

    zoHPCWindowNotes() = delete;

    static void tell(QWidget* window, const char* note, const QVariant& what);
    // The window's file holds this text, and it is no configuration. One without any text loses nothing.
    static void tellNotUnderstood(QWidget* window, const QString& text);
    // Not when there is no reason.
    static void tellNotSaved(QWidget* window, const zoHPCConfigurationFiles::Failure& failure);
    // Goes to the log as well.
    // `content` is what was converted: what of it is no parameter is told as "zohpc convert" tells it.
    static void tellImported(QWidget* window, const QString& fileName, const zoHPCConfigConverter& converter,
                             const zoFileText& content);
};
