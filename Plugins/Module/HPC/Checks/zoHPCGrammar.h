#pragma once

#include <QString>
#include <QStringList>

#include <limits>
#include <vector>

// What a configuration document may hold, as the readers of its sections understand it: the check of texts and the schema
// for editors are written from this one description. Readers take more without a word, as old files depend on it.
class zoHPCGrammar final
{
public:
    enum class Type {
        Text,        // anything, empty too
        Integer,     // within the limits of its attribute
        Number,      // with a decimal point
        Truth,       // "true", "false" in any case, "1", "0": what a display's reader takes as meant
        OptionTruth, // exactly "true" or "false"
        Word         // one of the words of its attribute
    };

    struct Attribute
    {
        QString name;
        Type type = Type::Text;
        QStringList words; // of Type::Word
        int least = std::numeric_limits<int>::min();
        int most = std::numeric_limits<int>::max();
        bool isRequired = false;
        bool mayBeEmpty = false; // which means the default

        bool hasLimits() const;
        // Of a value that is not empty.
        bool isNumber(const QString& value) const;
        bool isInLimits(const QString& value) const;
        bool isWord(const QString& value) const;
        bool accepts(const QString& value) const;
    };

    // Attributes of an element; of one with variants, those that its word selects.
    struct Variant
    {
        QString word;
        std::vector<Attribute> attributes;

        const Attribute* attribute(const QString& name) const; // null without one
        QStringList names() const;
    };

    struct Element
    {
        QString tag;
        QStringList parents; // empty for the root
        bool isSingle = false;
        QString selector; // the attribute whose words select the variant; empty with one variant only
        std::vector<Variant> variants;

        const Variant* variant(const QString& word) const; // null for an unknown word
        // Of the variant, or of all where the word is unknown.
        std::vector<Attribute> attributes(const QString& word) const;
    };

    zoHPCGrammar() = delete;

    // The root first, then in the order in which documents are written.
    static const std::vector<Element>& elements();
    // Null for a tag that no configuration has.
    static const Element* element(const QString& tag);
    static QStringList tags();
};
