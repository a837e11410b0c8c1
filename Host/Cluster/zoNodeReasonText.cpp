#include "zoNodeReasonText.h"

#include <zoNodeReason.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

namespace
{
// What programs of sessions say in details, in their English.
constexpr const char* s_details[] = {
    QT_TRANSLATE_NOOP("zoNodeReasonText",
                      "its program is version %1 with protocol %2, this one is version %3 with protocol %4"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "\"%1\" cannot be the name of a host"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "\"%1\" holds characters that a remote shell would not pass on"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "screen %1 is missing, the machine has %2"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "no GL 3.3: %1"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "a line that is no message"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "a message of %1 bytes"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "too much before the first message"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "exit status %1"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "signal %1"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "standard input is closed"),
    QT_TRANSLATE_NOOP("zoNodeReasonText", "standard output is closed"),
    QT_TRANSLATE_NOOP("zoNodeReasonText",
                      "the display %1 cannot be used: nothing answers there, or this account may not use it"),
};

// The texts that stand where the form has its places; empty unless the text has that form.
QStringList captured(const QString& form, const QString& text)
{
    static const QRegularExpression place(QStringLiteral("%\\d"));
    QString pattern = QStringLiteral("\\A");
    const QStringList parts = form.split(place);
    for (int i = 0; i < parts.size(); ++i)
        pattern += (i > 0 ? QStringLiteral("(.*)") : QString()) + QRegularExpression::escape(parts.at(i));
    const QRegularExpression whole(pattern + QStringLiteral("\\z"));
    return whole.match(text).capturedTexts();
}

QString translated(const QString& detail)
{
    for (const char* form : s_details) {
        const QStringList texts = captured(QString::fromLatin1(form), detail);
        if (texts.isEmpty())
            continue;
        QString text = QCoreApplication::translate("zoNodeReasonText", form);
        for (int i = 1; i < texts.size(); ++i)
            text.replace(QLatin1Char('%') + QString::number(i), texts.at(i));
        return text;
    }
    return detail; // of another program
}

// "window NAME: REASON", several of them with "; " between them.
QString windows(const QString& detail)
{
    static const QRegularExpression form(QStringLiteral("\\Awindow ([^:]+): (.*)\\z"));
    QStringList texts;
    const QStringList all = detail.split(QStringLiteral("; "));
    for (const QString& one : all) {
        const QRegularExpressionMatch match = form.match(one);
        texts << (match.hasMatch() ? QCoreApplication::translate("zoNodeReasonText", "window %1: %2")
                                         .arg(match.captured(1), translated(match.captured(2)))
                                   : one);
    }
    return texts.join(QStringLiteral("; "));
}
} // namespace

QString zoNodeReasonText::of(const QString& reason, const QString& detail)
{
    QString text;
    if (reason == QLatin1String(zoNodeReason::NoAnswer))
        text = QCoreApplication::translate("zoNodeReasonText", "it does not answer");
    else if (reason == QLatin1String(zoNodeReason::Silent))
        text = QCoreApplication::translate("zoNodeReasonText", "it stopped answering");
    else if (reason == QLatin1String(zoNodeReason::InUse))
        text = QCoreApplication::translate("zoNodeReasonText", "a server already runs on it");
    else if (reason == QLatin1String(zoNodeReason::Ended))
        text = QCoreApplication::translate("zoNodeReasonText", "its server ended");
    else if (reason == QLatin1String(zoNodeReason::Network))
        text = QCoreApplication::translate("zoNodeReasonText", "its network cannot be reached");
    else if (reason == QLatin1String(zoNodeReason::Window))
        return windows(detail);
    if (text.isEmpty())
        return translated(detail);
    return detail.isEmpty() ? text : text + QStringLiteral(": ") + translated(detail);
}
