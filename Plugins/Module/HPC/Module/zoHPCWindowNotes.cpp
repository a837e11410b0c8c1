#include "zoHPCWindowNotes.h"

#include "zoHPCConfigConverter.h"
#include "zoHPCDocumentLosses.h"
#include "zoHPCDocumentText.h"
#include "zoText.h"

#include <QDomDocument>
#include <QFileInfo>
#include <QStringList>
#include <QWidget>

#include <zoFileText.h>
#include <zoLog.h>

namespace
{
bool isLegacy(const QString& text)
{
    zoHPCConfigConverter converter;
    converter.convert(text);
    return converter.parameterCount() > 0;
}
} // namespace

void zoHPCWindowNotes::tell(QWidget* window, const char* note, const QVariant& what)
{
    window->setProperty(note, what);
    window->setProperty(note, QVariant());
}

void zoHPCWindowNotes::tellNotUnderstood(QWidget* window, const QString& text)
{
    if (text.trimmed().isEmpty())
        return;
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    QString reason = tr("it has none of the elements of a cluster configuration");
    if (!zoHPCDocumentText::parse(text, document, refusal))
        reason = tr("line %1, column %2: %3")
                     .arg(QString::number(refusal.line), QString::number(refusal.column), refusal.reason);
    else if (isLegacy(text))
        reason = tr("it is a configuration of the format before: File > \"Import legacy...\" reads it, "
                    "\"zohpc convert\" makes a file of the present format of it");
    tell(window, NotUnderstood, QStringList{window->windowFilePath(), reason});
}

void zoHPCWindowNotes::tellNotSaved(QWidget* window, const zoHPCConfigurationFiles::Failure& failure)
{
    if (failure.reason.isEmpty())
        return;
    QStringList note{failure.fileName, failure.reason};
    if (failure.isLogged)
        note << zoText("logged");
    tell(window, NotSaved, note);
}

void zoHPCWindowNotes::tellImported(QWidget* window, const QString& fileName,
                                    const zoHPCConfigConverter& converter, const zoFileText& content)
{
    if (converter.parameterCount() == 0)
        return;
    using Remark = zoHPCDocumentLosses::Loss;
    // In the order of "zohpc convert".
    QVector<Remark> remarks = zoHPCDocumentLosses::ofConversion(content.text());
    if (content.isCut())
        remarks.append({content.cutPlace().line, content.cutPlace().column, zoHPCDocumentLosses::cutText()});
    const QList<zoHPCConfigConverter::Remark> ofConverter = converter.remarks();
    for (const zoHPCConfigConverter::Remark& remark : ofConverter)
        remarks.append({remark.line, remark.column, remark.text});
    QStringList lines;
    for (const Remark& remark : qAsConst(remarks)) {
        if (lines.size() == MostRemarks) {
            lines << tr("and %1 more, which \"zohpc convert\" tells.")
                         .arg(QString::number(remarks.size() - MostRemarks));
            break;
        }
        lines << tr("line %1, column %2: %3")
                     .arg(QString::number(remark.line), QString::number(remark.column), remark.text);
    }
    for (const QString& line : qAsConst(lines))
        zoLog::info("%s", qUtf8Printable(tr("%1, %2").arg(fileName, line)));
    tell(window, Imported, QStringList{QFileInfo(fileName).absoluteFilePath()} + lines);
}
