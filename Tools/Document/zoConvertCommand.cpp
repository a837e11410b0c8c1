#include "zoConvertCommand.h"

#include "zoConsole.h"
#include "zoHPCConfigConverter.h"
#include "zoHPCDocumentLosses.h"
#include "zoHPCDocumentText.h"
#include "zoJson.h"

#include <QDomDocument>

QString zoConvertCommand::description() const
{
    return tr(
        "Converts a legacy configuration into the present format. What a reader of the old file "
        "should look at\n"
        "afterwards, because it was dropped or changed by rule, is told on standard error with the place "
        "of the\n"
        "parameter; the exit code is 0 all the same. What is no parameter, such as a comment, is lost: told "
        "likewise, and\n"
        "a file is then written only with --force.");
}

QStringList zoConvertCommand::examples() const
{
    return {QStringLiteral("zohpc convert old.xml -o wall.zhpc\t") + tr("the usual way"),
            QStringLiteral("zohpc convert old.xml | zohpc check -\t") + tr("the problems of the result")};
}

void zoConvertCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>, which is replaced as a whole. Standard output otherwise."),
                      tr("file")});
    parser.addOption(
        {QStringLiteral("json"),
         tr("With --output: write the remarks as JSON to standard output, a list of objects with \"file\", "
            "\"line\", \"column\", \"kind\" and \"text\".")});
    parser.addOption(
        {QStringLiteral("force"),
         tr("With --output: write it even when something of the old file that is no parameter gets "
            "lost, such as a comment.")});
    parser.addPositionalArgument(QStringLiteral("LEGACY.xml"),
                                 tr("A legacy configuration, \"-\" for standard input."));
}

int zoConvertCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1)
        return usageError(files.isEmpty() ? tr("no file given") : tr("one file at a time"));
    const QString output =
        parser.isSet(QStringLiteral("output")) ? parser.value(QStringLiteral("output")) : QStringLiteral("-");
    const bool isJson = parser.isSet(QStringLiteral("json"));
    if (isJson && output == QLatin1String("-"))
        return usageError(tr("--json needs --output"));

    const QString& file = files.constFirst();
    zoTextFile::Content content;
    if (!zoTextFile::mayWrite({output}, file) || !zoTextFile::read(file, content))
        return zoConsole::Unusable;
    const QString& legacy = content.text;
    // The window imports what does not parse as an empty configuration; a script shall not go on with that.
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(legacy, document, refusal)) {
        zoConsole::printError(file, refusal.line, refusal.column,
                              refusal.reason.isEmpty() ? tr("the file is empty") : refusal.reason);
        return zoConsole::Unusable;
    }
    zoHPCConfigConverter converter;
    const QString text = converter.convert(legacy);
    if (converter.parameterCount() == 0) {
        zoConsole::printError(file, 1, 1,
                              tr("no legacy configuration: it has no parameter (element \"key\")"));
        return zoConsole::Unusable;
    }
    QJsonArray list;
    const bool isLossy = printLosses(file, content, isJson ? &list : nullptr);
    const bool isRefused = isLossy && output != QLatin1String("-") && !parser.isSet(QStringLiteral("force"));
    if (!isRefused && !zoTextFile::write(output, text))
        return zoConsole::Unusable;

    const QList<zoHPCConfigConverter::Remark> remarks = converter.remarks();
    for (const zoHPCConfigConverter::Remark& remark : remarks) {
        if (isJson)
            list << QJsonObject{{QStringLiteral("file"), file},
                                {QStringLiteral("line"), remark.line},
                                {QStringLiteral("column"), remark.column},
                                {QStringLiteral("kind"), zoHPCConfigConverter::Remark::kindName(remark.kind)},
                                {QStringLiteral("text"), remark.text}};
        else
            zoConsole::printError(file, remark.line, remark.column, remark.text);
    }
    if (isJson && !zoConsole::write(zoJson::text(list)))
        return zoConsole::Unusable;
    if (isRefused) {
        zoConsole::printError(
            tr("%1: not written, for something of %2 would be lost; --force does it all the same")
                .arg(output, file));
        return zoConsole::Unusable;
    }
    return zoConsole::Fine;
}

bool zoConvertCommand::printLosses(const QString& file, const zoTextFile::Content& content, QJsonArray* list)
{
    QVector<zoHPCDocumentLosses::Loss> losses = zoHPCDocumentLosses::ofConversion(content.text);
    if (content.isCut)
        losses.append({content.cutLine, content.cutColumn, zoHPCDocumentLosses::cutText()});
    for (const zoHPCDocumentLosses::Loss& loss : qAsConst(losses)) {
        if (list == nullptr)
            zoConsole::printError(file, loss.line, loss.column, loss.text);
        else
            *list << QJsonObject{{QStringLiteral("file"), file},
                                 {QStringLiteral("line"), loss.line},
                                 {QStringLiteral("column"), loss.column},
                                 {QStringLiteral("kind"), QStringLiteral("loss")},
                                 {QStringLiteral("text"), loss.text}};
    }
    return !losses.isEmpty();
}
