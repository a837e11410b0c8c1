#include "zoClusterXml.h"

#include "zoClusterLimits.h"

#include <zoQt.h>

#include <QDomDocument>
#include <QThread>
#include <QXmlAttributes>
#include <QXmlDeclHandler>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlLocator>
#include <QXmlParseException>
#include <QXmlSimpleReader>
#include <QXmlStreamReader>

#include <algorithm>
#include <memory>
#include <vector>

// The reader of setContent() in Qt 5, which Qt 6 still has aside, is deprecated.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace
{
// A document type is nothing that configurations need. The parser's time grows with the square of its
// declarations, and their values stand wherever a reference does.
constexpr int s_maximumDeclarations = 256;
constexpr int s_maximumEntityLength = 4096;
constexpr int s_maximumReferences = 1000;
constexpr int s_maximumBrackets = 10000;
// The parser recurses over elements, too. What cannot be deeper than this has room on any stack.
constexpr int s_shallow = 1000;
constexpr uint s_deepStack = 16 * 1024 * 1024; // more than MaximumDepth takes, with Qt 6 nearly 5 MiB

// The parser's handler of a document, with an eye on what it is told.
class Guard final : public QXmlContentHandler, public QXmlDeclHandler
{
public:
    void setContent(QXmlContentHandler* handler) { m_content = handler; }
    zoClusterXml::Outcome outcome() const { return m_outcome; }

    void setDocumentLocator(QXmlLocator* locator) override { m_content->setDocumentLocator(locator); }
    bool startDocument() override { return m_content->startDocument(); }
    bool endDocument() override { return m_content->endDocument(); }
    bool startPrefixMapping(const QString& prefix, const QString& uri) override
    {
        return m_content->startPrefixMapping(prefix, uri);
    }
    bool endPrefixMapping(const QString& prefix) override { return m_content->endPrefixMapping(prefix); }
    bool startElement(const QString& uri, const QString& localName, const QString& name,
                      const QXmlAttributes& attributes) override
    {
        m_levels += ++m_depth;
        if (m_depth > zoClusterLimits::MaximumDepth || m_levels > zoClusterLimits::MaximumLevels)
            return refuse(zoClusterXml::Outcome::TooDeep);
        if (attributes.count() > zoClusterLimits::MaximumAttributes)
            return refuse(zoClusterXml::Outcome::TooManyAttributes);
        return m_content->startElement(uri, localName, name, attributes);
    }
    bool endElement(const QString& uri, const QString& localName, const QString& name) override
    {
        --m_depth;
        return m_content->endElement(uri, localName, name);
    }
    bool characters(const QString& text) override { return m_content->characters(text); }
    bool ignorableWhitespace(const QString& text) override { return m_content->ignorableWhitespace(text); }
    bool processingInstruction(const QString& target, const QString& data) override
    {
        return m_content->processingInstruction(target, data);
    }
    // A reference to nothing stands for nothing.
    bool skippedEntity(const QString&) override { return true; }

    bool attributeDecl(const QString&, const QString&, const QString&, const QString&,
                       const QString&) override
    {
        return declare(0);
    }
    bool internalEntityDecl(const QString&, const QString& value) override { return declare(value.size()); }
    bool externalEntityDecl(const QString&, const QString&, const QString&) override { return declare(0); }

    QString errorString() const override { return QStringLiteral("refused"); }

private:
    bool declare(int length)
    {
        if (++m_declarations > s_maximumDeclarations || length > s_maximumEntityLength)
            return refuse(zoClusterXml::Outcome::TooManyEntities);
        return true;
    }
    bool refuse(zoClusterXml::Outcome outcome)
    {
        m_outcome = outcome;
        return false;
    }

    QXmlContentHandler* m_content = nullptr; // of the document that is being read
    zoClusterXml::Outcome m_outcome = zoClusterXml::Outcome::Malformed;
    int m_depth = 0;
    qint64 m_levels = 0; // of all elements
    int m_declarations = 0;
};

// Builds the same document as setContent() of Qt 5, but for a document type, which nobody asks for. Elements come into
// theirs when they are whole: the toolkit goes all the way up from an element for each attribute that it gets.
class Builder final : public QXmlDefaultHandler
{
public:
    explicit Builder(QDomDocument& document) : m_document(document) {}

    bool startElement(const QString&, const QString&, const QString& name,
                      const QXmlAttributes& attributes) override
    {
        QDomElement element = m_document.createElement(name);
        for (int i = 0; i < attributes.count(); ++i)
            element.setAttribute(attributes.qName(i), attributes.value(i));
        m_open.push_back(element);
        return true;
    }
    bool endElement(const QString&, const QString&, const QString&) override
    {
        if (m_open.empty())
            return false;
        const QDomElement element = m_open.back();
        m_open.pop_back();
        append(element);
        return true;
    }
    bool characters(const QString& text) override
    {
        if (m_open.empty())
            return false;
        if (m_isSection)
            append(m_document.createCDATASection(text));
        else
            append(m_document.createTextNode(text));
        return true;
    }
    bool processingInstruction(const QString& target, const QString& data) override
    {
        append(m_document.createProcessingInstruction(target, data));
        return true;
    }

    bool startCDATA() override { return setIsSection(true); }
    bool endCDATA() override { return setIsSection(false); }
    bool comment(const QString& text) override
    {
        append(m_document.createComment(text));
        return true;
    }

    bool fatalError(const QXmlParseException& error) override
    {
        refusal.reason = error.message();
        refusal.line = error.lineNumber();
        refusal.column = error.columnNumber();
        return true;
    }

    zoClusterXml::Refusal refusal;

private:
    void append(const QDomNode& node)
    {
        if (m_open.empty())
            m_document.appendChild(node);
        else
            m_open.back().appendChild(node);
    }
    bool setIsSection(bool isSection)
    {
        m_isSection = isSection;
        return true;
    }

    QDomDocument& m_document;
    std::vector<QDomElement> m_open; // in no other one yet
    bool m_isSection = false;
};

// What stands between them is no markup.
constexpr struct
{
    const char* begin;
    const char* end;
} s_plain[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

// Behind the last character of what begins at an offset, if that is no markup; or else the offset.
int behindPlain(const QString& text, int offset)
{
    const QStringView rest = QStringView(text).mid(offset);
    for (const auto& plain : s_plain) {
        const QLatin1String begin(plain.begin);
        const QLatin1String end(plain.end);
        if (!rest.startsWith(begin))
            continue;
        const int found = text.indexOf(end, offset + begin.size());
        return found < 0 ? text.size() : found + end.size();
    }
    return offset;
}

// A reference to a character beyond the first 65536 is one to the character with its last 16 bits, as it is for Qt 5; Qt 6
// reads two characters.
QString withShortReferences(const QString& text)
{
    if (!text.contains(QLatin1String("&#")))
        return text;
    QString result;
    int done = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('<'))
            i = std::max(i, behindPlain(text, i) - 1);
        if (text.at(i) != QLatin1Char('&') || i + 1 == text.size() || text.at(i + 1) != QLatin1Char('#'))
            continue;
        const int end = text.indexOf(QLatin1Char(';'), i);
        const int base = QStringView(text).mid(i + 2, 1) == QLatin1String("x") ? 16 : 10;
        const int begin = base == 16 ? i + 3 : i + 2;
        bool ok = false;
        const uint code = text.mid(begin, std::max(0, end - begin)).toUInt(&ok, base);
        if (!ok || code <= 0xffff)
            continue;
        // As long as before: errors have their places.
        result += text.mid(done, begin - done) +
                  QString::number(code & 0xffffU, base).rightJustified(end - begin, QLatin1Char('0'));
        done = end;
        i = end;
    }
    return result + text.mid(done);
}

// The reader of setContent() in Qt 5, with the guard before the document.
class Reader final : public QXmlSimpleReader
{
public:
    Reader()
    {
        setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
        setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
        setFeature(QStringLiteral("http://trolltech.com/xml/features/report-whitespace-only-CharData"),
                   false);
    }
    zoClusterXml::Outcome outcome() const { return m_guard.outcome(); }

    bool readInto(QDomDocument& document, const QString& text, zoClusterXml::Refusal& refusal)
    {
        QXmlInputSource source;
        // The mark of the byte order belongs to the encoding, not to the text.
        source.setData(withShortReferences(text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text));
        Builder builder(document);
        m_guard.setContent(&builder);
        setContentHandler(&m_guard);
        setLexicalHandler(&builder);
        setDeclHandler(&m_guard);
        setErrorHandler(&builder);
        const bool isRead = parse(source);
        refusal = builder.refusal;
        return isRead;
    }

private:
    Guard m_guard;
};

// Behind the sign that closes the tag that begins at an offset; in values of attributes it is a character like others.
int behindTag(const QString& text, int offset)
{
    QChar quote;
    for (int i = offset; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!quote.isNull())
            quote = c == quote ? QChar() : quote;
        else if (c == QLatin1Char('"') || c == QLatin1Char('\''))
            quote = c;
        else if (c == QLatin1Char('>'))
            return i + 1;
    }
    return text.size();
}

// Whether elements may be inside each other deeper than there is room for on any stack. With a document type nobody knows.
bool mayBeDeep(const QString& text)
{
    if (text.contains(QLatin1String("<!DOCTYPE")))
        return true;
    if (text.count(QLatin1Char('<')) <= s_shallow)
        return false;
    int depth = 0;
    int next = 0;
    for (int i = text.indexOf(QLatin1Char('<')); i >= 0; i = text.indexOf(QLatin1Char('<'), next)) {
        next = behindPlain(text, i);
        if (next > i)
            continue;
        next = behindTag(text, i);
        if (QStringView(text).mid(i + 1, 1) == QLatin1String("/"))
            --depth;
        else if (text.at(next - 2) != QLatin1Char('/') && ++depth > s_shallow)
            return true;
    }
    return false;
}

// On a stack of its own where the text may be deep: what can be read does not follow from the stack of whoever reads.
// Elsewhere it would cost: memory that one thread gave back is no memory for another.
bool readInto(Reader& reader, QDomDocument& document, const QString& text, zoClusterXml::Refusal& refusal)
{
    if (!zoQt::ReaderIsDeep || !mayBeDeep(text))
        return reader.readInto(document, text, refusal);
    bool isDone = false;
    bool isRead = false;
    const auto read = [&] {
        isRead = reader.readInto(document, text, refusal);
        isDone = true;
    };
    const std::unique_ptr<QThread> thread(QThread::create(read));
    thread->setStackSize(s_deepStack);
    thread->start();
    thread->wait();
    if (!isDone) // no room for it
        read();
    return isRead;
}

// What costs much before the guard hears of it.
bool hasTooManyEntities(const QString& text)
{
    if (!text.contains(QLatin1String("<!DOCTYPE")))
        return false;
    // The parser recurses over the brackets of an element's declaration, and a parameter entity may hold many.
    const int brackets = text.count(QLatin1Char('('));
    const int parameters = text.count(QLatin1Char('%'));
    if (text.contains(QLatin1String("<!ELEMENT")) &&
        (brackets > s_maximumBrackets || parameters > s_maximumBrackets / s_maximumEntityLength))
        return true;
    if (!text.contains(QLatin1String("<!ENTITY")))
        return false;
    int references = 0;
    const QStringView all(text);
    for (int i = text.indexOf(QLatin1Char('&')); i >= 0; i = text.indexOf(QLatin1Char('&'), i + 1)) {
        const QStringView name = all.mid(i + 1, 5);
        const bool isPredefined =
            name.startsWith(QLatin1Char('#')) || name.startsWith(QLatin1String("lt;")) ||
            name.startsWith(QLatin1String("gt;")) || name.startsWith(QLatin1String("amp;")) ||
            name.startsWith(QLatin1String("apos;")) || name.startsWith(QLatin1String("quot;"));
        references += isPredefined ? 0 : 1;
    }
    return references > s_maximumReferences;
}

// A stricter reader, which says better what is wrong, and where. It compares each attribute of an element with
// all others.
bool explain(const QString& text, zoClusterXml::Refusal& refusal)
{
    if (text.contains(QLatin1String("<!DOCTYPE")))
        return false;
    int signs = 0;
    for (const QChar c : text) {
        if (c == QLatin1Char('<'))
            signs = 0;
        else if (c == QLatin1Char('=') && ++signs > zoClusterLimits::MaximumAttributes)
            return false;
    }
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false); // a colon in a name is just a character: no prefix is declared
    int depth = 0;
    while (!reader.atEnd() && depth <= zoClusterLimits::MaximumDepth) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : token == QXmlStreamReader::EndElement ? -1 : 0;
    }
    if (!reader.hasError())
        return false;
    refusal.line = int(reader.lineNumber());
    refusal.column = int(reader.columnNumber()) + 1;
    refusal.reason = reader.errorString();
    return true;
}
} // namespace

zoClusterXml::Outcome zoClusterXml::read(const QString& text, QDomDocument& document, Refusal& refusal)
{
    document = QDomDocument();
    refusal = Refusal();
    if (hasTooManyEntities(text))
        return Outcome::TooManyEntities;
    Reader reader;
    QDomDocument read;
    if (readInto(reader, read, text, refusal)) {
        document = read;
        return Outcome::Read;
    }
    refusal.line = std::max(refusal.line, 1);
    refusal.column = std::max(refusal.column, 1);
    if (reader.outcome() == Outcome::Malformed)
        explain(text, refusal);
    return reader.outcome();
}

#pragma GCC diagnostic pop
