#include "zoHPCPdfFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

namespace
{
bool isDateGiven(qint64& seconds)
{
    bool isNumber = false;
    seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isNumber);
    return isNumber;
}

// The writer knows no date but now. A date of the same form leaves all offsets of the file as they are.
void setDate(QByteArray& pdf)
{
    qint64 seconds = 0;
    const QByteArray begin("/CreationDate (D:");
    const int date = pdf.indexOf(begin);
    const int end = pdf.indexOf(')', date);
    if (!isDateGiven(seconds) || date < 0 || end < 0)
        return;
    const int from = date + begin.size();
    QByteArray text = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
                          .toString(QString::fromLatin1("yyyyMMddHHmmss"))
                          .toLatin1();
    text += end - from == text.size() + 1 ? "Z" : "+00'00'"; // as the writer has it, by the local time
    if (text.size() == end - from)
        pdf.replace(from, text.size(), text);
}
} // namespace

bool zoHPCPdfFile::write(QIODevice& device, const QString& title, const QPageLayout& page, int resolution,
                         const Pages& pages)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    // Which program and, where its host says so, of which version: two of them may draw one wall differently.
    writer.setCreator(QString(QCoreApplication::applicationName() + QLatin1Char(' ') +
                              QCoreApplication::applicationVersion())
                          .trimmed());
    writer.setTitle(title);
    writer.setResolution(resolution);
    writer.setPageLayout(page);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    pages(writer, painter);
    if (!painter.end())
        return false;
    QByteArray bytes = buffer.data();
    setDate(bytes);
    return device.write(bytes) == bytes.size();
}

QDateTime zoHPCPdfFile::date()
{
    qint64 seconds = 0;
    return isDateGiven(seconds) ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
                                : QDateTime::currentDateTimeUtc();
}
