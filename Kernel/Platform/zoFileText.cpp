#include "zoFileText.h"

#include <QTextCodec>

#include <algorithm>

namespace
{
// How many bytes of `bytes` are UTF-8, from its beginning on.
int validSize(const QByteArray& bytes)
{
    const auto byteAt = [&bytes](int i) { return i < bytes.size() ? uchar(bytes.at(i)) : 0U; };
    const auto continues = [&byteAt](int i, uint least = 0x80, uint most = 0xbf) {
        return byteAt(i) >= least && byteAt(i) <= most;
    };
    int i = 0;
    while (i < bytes.size()) {
        const uint first = byteAt(i);
        if (first < 0x80)
            i += 1;
        else if (first >= 0xc2 && first <= 0xdf && continues(i + 1))
            i += 2;
        else if (first >= 0xe0 && first <= 0xef && continues(i + 2) &&
                 // Neither longer than needed nor half of a pair.
                 continues(i + 1, first == 0xe0 ? 0xa0 : 0x80, first == 0xed ? 0x9f : 0xbf))
            i += 3;
        else if (first >= 0xf0 && first <= 0xf4 && continues(i + 2) && continues(i + 3) &&
                 continues(i + 1, first == 0xf0 ? 0x90 : 0x80, first == 0xf4 ? 0x8f : 0xbf))
            i += 4;
        else
            break;
    }
    return i;
}

// What the first bytes tell of UTF-16: a mark, or the beginning of a declaration. Empty for other bytes.
QByteArray utf16Encoding(const QByteArray& bytes)
{
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff"))
        return "UTF-16";
    if (bytes.startsWith(QByteArray("<\0?\0", 4)))
        return "UTF-16LE";
    return bytes.startsWith(QByteArray("\0<\0?", 4)) ? "UTF-16BE" : "";
}

// The encoding that the declaration at the beginning names; empty without one.
QByteArray declaredEncoding(const QByteArray& bytes)
{
    if (!bytes.startsWith("<?xml"))
        return {};
    const QByteArray declaration = bytes.left(bytes.indexOf('>'));
    const int key = declaration.indexOf("encoding");
    const int value = key < 0 ? -1 : declaration.indexOf('=', key);
    if (value < 0)
        return {};
    const QByteArray quoted = declaration.mid(value + 1).trimmed();
    return quoted.isEmpty() ? QByteArray() : quoted.mid(1, quoted.indexOf(quoted.at(0), 1) - 1);
}

bool isBlank(const QChar c)
{
    return c.isSpace() || c.isNull();
}
} // namespace

zoFileText::zoFileText(const QByteArray& bytes)
{
    const int nul = bytes.indexOf('\0');
    const QByteArray whole = nul < 0 ? bytes : bytes.left(nul);
    const int valid = validSize(whole);
    if ((valid < whole.size() || !utf16Encoding(bytes).isEmpty()) && readDeclared(bytes))
        return;
    m_encoding = "UTF-8";
    m_text = QString::fromUtf8(whole);
    if (valid < whole.size())
        m_invalidAt = QString::fromUtf8(whole.left(valid)).size();
    const QByteArray rest = nul < 0 ? QByteArray() : bytes.mid(nul);
    m_isCut = !std::all_of(rest.begin(), rest.end(), [](char c) { return isBlank(QLatin1Char(c)); });
}

bool zoFileText::readDeclared(const QByteArray& bytes)
{
    const QByteArray utf16 = utf16Encoding(bytes);
    const QByteArray name = utf16.isEmpty() ? declaredEncoding(bytes).toUpper() : utf16;
    const QTextCodec* codec = name.isEmpty() ? nullptr : QTextCodec::codecForName(name);
    if (codec == nullptr || codec->name() == "UTF-8")
        return false;
    QTextCodec::ConverterState state;
    m_text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (m_text.startsWith(QChar(QChar::ByteOrderMark)))
        m_text.remove(0, 1);
    m_encoding = name;
    // Not every codec counts; none but those of UTF-16 can mean this character.
    const int replaced = m_text.indexOf(QChar(QChar::ReplacementCharacter));
    if (state.invalidChars > 0 || state.remainingChars > 0 || (replaced >= 0 && utf16.isEmpty()))
        m_invalidAt = qMax(0, replaced);
    const int nul = m_text.indexOf(QChar(QChar::Null));
    if (nul >= 0) {
        m_isCut = !std::all_of(m_text.cbegin() + nul, m_text.cend(), isBlank);
        m_text.truncate(nul);
    }
    return true;
}

zoFileText::Place zoFileText::placeOf(const QString& text, int offset)
{
    Place place;
    place.line += int(std::count(text.cbegin(), text.cbegin() + offset, QLatin1Char('\n')));
    place.column = offset - (offset == 0 ? -1 : text.lastIndexOf(QLatin1Char('\n'), offset - 1));
    return place;
}
