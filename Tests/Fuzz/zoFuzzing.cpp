#include "zoFuzzing.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace
{
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}
} // namespace

void zoFuzzing::require(bool holds, const char* claim, const QString& detail)
{
    if (holds)
        return;
    std::fprintf(stderr, "not true: %s\n%s\n", claim, qUtf8Printable(detail));
    std::abort();
}

void zoFuzzing::requireSame(const QString& actual, const QString& expected, const char* claim)
{
    if (actual == expected)
        return;
    int same = 0;
    while (same < actual.size() && same < expected.size() && actual.at(same) == expected.at(same))
        ++same;
    const int from = qMax(0, same - 120);
    require(
        false, claim,
        QStringLiteral("...%1\n--- instead of\n...%2").arg(actual.mid(from, 400), expected.mid(from, 400)));
}

QString zoFuzzing::textOf(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    return QString::fromUtf8(bytes.constData());
}

QString zoFuzzing::attribute(const QString& name, const QString& value)
{
    return QLatin1Char(' ') + name + QLatin1String("=\"") + escaped(value) + QLatin1Char('"');
}

QString zoFuzzing::escaped(const QString& value)
{
    QString plain;
    plain.reserve(value.size());
    for (const QChar c : value) {
        if (c.unicode() >= 0x20 && c.unicode() < 0xfffe)
            plain += c;
    }
    return plain.toHtmlEscaped();
}

// Once, before the first input.
int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Stays to the end: what the targets keep between inputs has no other order of destruction.
    static QApplication* const s_application = new QApplication(*argc, *argv);
    Q_UNUSED(s_application)
    qInstallMessageHandler(dropMessage);
    return 0;
}
