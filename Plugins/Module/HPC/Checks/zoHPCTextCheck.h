#pragma once

#include "zoHPCGrammar.h"
#include "zoHPCProblemKinds.h"
#include "zoHPCTextParts.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QString>

#include <vector>

class QDomDocument;

// What the text of a configuration holds and no reader takes, or takes otherwise than it was meant: with its place, and
// what was meant where that can be guessed. In a time in proportion to the text.
class zoHPCTextCheck final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCTextCheck)

public:
    using Kind = zoHPCProblemKind;

    struct Finding
    {
        Kind kind;
        int offset; // in the text
        QString message;
        QString fixText; // what a fix of the items would do
    };

    // Of a text that zoClusterXml::read() takes.
    explicit zoHPCTextCheck(const QString& text);

    const zoHPCTextParts& parts() const { return m_parts; }
    // In the order of the text.
    const std::vector<Finding>& findings() const { return m_findings; }
    // For what only the items tell; to be sorted afterwards.
    void add(Kind kind, int offset, const QString& message, const QString& fixText = {});
    void sort();

    // The element that was meant; the tag as it stands where that is none or nobody knows.
    QString tag(int part) const;
    // Whether the element has something that cannot be read and leaves open what was meant: what follows from that is no
    // problem of its own.
    bool isDoubtful(int part) const { return m_doubtful.contains(part); }
    void setDoubtful(int part) { m_doubtful.insert(part); }
    // Whether an element is missing where it belongs.
    bool isStructureDoubtful() const { return m_isStructureDoubtful; }

    // Makes of a document that was read from the text the one that was meant, as far as it can be guessed, so that a
    // problem is not told again as what follows from it. Whether that changed anything.
    bool mend(QDomDocument& document) const;

private:
    struct Change
    {
        int part;
        QString name; // of an attribute; empty for the tag
        QString newName;
        QString newValue;
    };

    void checkElement(int part);
    bool checkTag(int part, const zoHPCTextParts::Part& element);
    void checkPlace(int part, const zoHPCGrammar::Element& element, const QString& parent);
    void checkAttributes(int part, const zoHPCGrammar::Element& element);
    void checkUnknownAttribute(int part, const zoHPCGrammar::Element& element,
                               const zoHPCGrammar::Variant& variant,
                               const zoHPCTextParts::Attribute& attribute, QSet<QString>& given);
    void checkValue(int part, const zoHPCGrammar::Attribute& rule,
                    const zoHPCTextParts::Attribute& attribute);
    void checkStrayText(const zoHPCTextParts::Part& part);

    zoHPCTextParts m_parts;
    std::vector<Finding> m_findings;
    std::vector<Change> m_changes;
    std::vector<int> m_readers; // the nearest element around each part that somebody reads; -1 for none
    QHash<int, QString> m_tags; // by part, where another one was meant
    QSet<int> m_doubtful;
    QSet<QString> m_singles; // that there are already
    bool m_isStructureDoubtful = false;
};
