#include "zoHPCHostsSyntax.h"

#include "zoHPCBracketText.h"
#include "zoHPCHostsText.h"

#include <algorithm>

namespace
{
const QLatin1String s_forwards("forwards=");
const QLatin1String s_render("rt"); // means something without a value, too

QChar closing(QChar opening)
{
    return opening == QLatin1Char('{') ? QLatin1Char('}') : QLatin1Char(')');
}

bool isSeparator(QChar c)
{
    return c == QLatin1Char(',') || c == QLatin1Char('|') || zoHPCHostsText::isBlank(c);
}

bool isBrace(QChar c)
{
    return c == QLatin1Char('{') || c == QLatin1Char('}') || c == QLatin1Char('(') || c == QLatin1Char(')');
}

// Set operators of cluster tools.
bool isOperator(QChar c)
{
    return c == QLatin1Char('!') || c == QLatin1Char('^') || c == QLatin1Char('&');
}

bool beginsElement(QStringView word)
{
    if (word.size() < 2 || word.front() != QLatin1Char('<'))
        return false;
    const QChar c = word.at(1);
    return c.isLetter() || c == QLatin1Char('?') || c == QLatin1Char('!') || c == QLatin1Char('/');
}
} // namespace

zoHPCHostsSyntax::zoHPCHostsSyntax(const QString& text, Form form) : m_text(text), m_form(form) {}

zoHPCHostsSyntax::Problem zoHPCHostsSyntax::firstProblem(const QString& text, Form form)
{
    zoHPCHostsSyntax syntax(text, form);
    if (syntax.readAll() && !syntax.m_braces.empty()) {
        const Brace& open = syntax.m_braces.back();
        syntax.fail(open.offset, tr("\"%1\" is not closed").arg(open.opening));
    }
    return syntax.m_problem;
}

bool zoHPCHostsSyntax::readAll()
{
    while (m_position < m_text.size()) {
        const QChar c = m_text.at(m_position);
        if (isSeparator(c))
            ++m_position;
        else if (m_form == Form::HostsText && isBrace(c) ? !readBrace() : !readWord())
            return false;
    }
    return true;
}

bool zoHPCHostsSyntax::readWord()
{
    const auto endsWord = [this](QChar c) {
        return m_form == Form::HostsText ? zoHPCHostsText::endsWord(c)
                                         : isSeparator(c) || c == QLatin1Char('[');
    };
    const int begin = m_position;
    while (m_position < m_text.size() && !endsWord(m_text.at(m_position))) {
        if (m_text.at(m_position) == QLatin1Char(']'))
            return fail(m_position, tr("\"]\" closes nothing"));
        ++m_position;
    }
    const QStringView word = m_text.mid(begin, m_position - begin);
    if (m_form == Form::HostsText && refuseWord(begin, word))
        return false;
    m_canOpen = m_canOpen || (!word.isEmpty() && !zoHPCHostsText::hostName(word).isEmpty() &&
                              word.front() != QLatin1Char('/') && word != QLatin1String("-"));
    return readBlocks();
}

// The brackets behind a word, over blanks too.
bool zoHPCHostsSyntax::readBlocks()
{
    int p = m_position;
    while (p < m_text.size() && zoHPCHostsText::isBlank(m_text.at(p)))
        ++p;
    if (p == m_text.size() || m_text.at(p) != QLatin1Char('['))
        return true;
    m_position = p;
    const int end = int(m_text.indexOf(QLatin1Char(']'), p));
    if (end < 0)
        return fail(p, tr("\"[\" is not closed"));
    const QStringView block = m_text.mid(p + 1, end - p - 1);
    // What is wrong with a range of numbers is told where it is read.
    if (zoHPCBracketText::isRange(block)) {
        m_canOpen = true;
        m_position = end + 1;
        return true;
    }
    if (!readBlock(end))
        return false;
    m_position = end + 1;
    p = m_position;
    while (p < m_text.size() && zoHPCHostsText::isBlank(m_text.at(p)))
        ++p;
    const bool isText =
        m_position < m_text.size() && !isSeparator(m_text.at(m_position)) && !isBrace(m_text.at(m_position));
    if (isText || (p < m_text.size() && m_text.at(p) == QLatin1Char('[')))
        return fail(p, tr("text behind the options of a host; options come last"));
    return true;
}

// A bracket that is no range of numbers: options.
bool zoHPCHostsSyntax::readBlock(int end)
{
    const QStringView whole = m_text.mid(m_position, end + 1 - m_position);
    const QStringView block = whole.mid(1, whole.size() - 2);
    if (std::all_of(block.begin(), block.end(), isSeparator))
        return fail(m_position, tr("\"%1\" is empty").arg(whole.toString()));
    if (m_form == Form::Names)
        return fail(m_position, tr("\"%1\" is no range of numbers").arg(whole.toString()));
    return readOptions(m_position + 1, end);
}

bool zoHPCHostsSyntax::readOptions(int begin, int end)
{
    const int block = begin - 1;
    for (int p = begin; p < end;) {
        if (isSeparator(m_text.at(p))) {
            ++p;
            continue;
        }
        int optionEnd = p;
        // Hosts that it forwards to stand with blanks between them.
        const bool isForwards = m_text.mid(p).startsWith(s_forwards);
        while (optionEnd < end && m_text.at(optionEnd) != QLatin1Char(',') &&
               (isForwards || !isSeparator(m_text.at(optionEnd))))
            ++optionEnd;
        const QStringView option = m_text.mid(p, optionEnd - p);
        if (isForwards) {
            if (!readForwards(p + s_forwards.size(), optionEnd))
                return false;
        } else if (option.indexOf(QLatin1Char('=')) < 1 &&
                   option.compare(s_render, Qt::CaseInsensitive) != 0) {
            return fail(block,
                        tr("\"%1\" is neither a range of numbers, such as [1-16], nor options, such as "
                           "[rt=0]")
                            .arg(m_text.mid(block, end + 1 - block).toString()));
        }
        p = optionEnd;
    }
    return true;
}

bool zoHPCHostsSyntax::readForwards(int begin, int end)
{
    for (int p = begin; p < end;) {
        if (isSeparator(m_text.at(p)) || isBrace(m_text.at(p))) {
            ++p;
            continue;
        }
        const int word = p;
        while (p < end && !isSeparator(m_text.at(p)) && !isBrace(m_text.at(p)))
            ++p;
        if (refuseWord(word, m_text.mid(word, p - word)))
            return false;
    }
    return true;
}

bool zoHPCHostsSyntax::readBrace()
{
    const QChar brace = m_text.at(m_position);
    if (brace == QLatin1Char('}') || brace == QLatin1Char(')')) {
        if (m_braces.empty())
            return fail(m_position, tr("\"%1\" closes nothing").arg(brace));
        if (closing(m_braces.back().opening) != brace)
            return fail(m_position, tr("\"%1\" does not close \"%2\"").arg(brace, m_braces.back().opening));
        m_braces.pop_back();
        m_canOpen = true;
    } else {
        if (!m_canOpen)
            return fail(m_position,
                        tr("\"%1\" follows no host that could forward to the network").arg(brace));
        m_braces.push_back({brace, m_position});
        m_canOpen = false;
    }
    ++m_position;
    return true;
}

// Returns true for a word that other programs would take for more than a name.
bool zoHPCHostsSyntax::refuseWord(int begin, QStringView word)
{
    if (beginsElement(word)) {
        fail(begin,
             tr("this is XML, not hosts text; 'zohpc nodes FILE' writes the hosts of a configuration"));
        return true;
    }
    if (word.size() > 1 && word.front() == QLatin1Char('@')) {
        fail(begin, tr("groups of hosts (\"%1\") are not supported; write their hosts").arg(word.toString()));
        return true;
    }
    const auto found = std::find_if(word.begin(), word.end(), isOperator);
    if (found == word.end())
        return false;
    fail(begin + int(found - word.begin()),
         tr("the operator \"%1\" is not supported; write the hosts that are left").arg(*found));
    return true;
}

bool zoHPCHostsSyntax::fail(int offset, const QString& reason)
{
    m_problem = {offset, reason};
    return false;
}
