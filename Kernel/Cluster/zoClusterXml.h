#pragma once

#include "zoKernelExport.h"

#include <QString>

class QDomDocument;

// Reads the text of a configuration document. What QDomDocument::setContent() takes is taken, as old tools
// wrote it: XML 1.1, unknown encodings, attributes twice or without a blank between them. Only what would use
// up the stack, memory or time is refused as well. Host, module and tools read documents here.
namespace zoClusterXml
{
enum class Outcome {
    Read,
    Malformed,
    TooDeep, // more elements inside each other than zoClusterLimits allows
    TooManyAttributes,
    TooManyEntities // declarations of a document type, or what they would expand to
};

struct Refusal
{
    int line = 1; // from 1, and so is the column
    int column = 1;
    QString reason; // in English; for Malformed only
};

// What stood before an error is not used: half a configuration is worse than none.
ZO_KERNEL_EXPORT Outcome read(const QString& text, QDomDocument& document, Refusal& refusal);
} // namespace zoClusterXml
