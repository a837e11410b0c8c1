#pragma once

#include <QCoreApplication>
#include <QString>

class zoHPCTextDelta;

// What people call the step from one text of a configuration to the next, read from what differs: "Delete
// projection Wall".
class zoHPCStepName final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCStepName)

public:
    // `field` is what the field is called in which a person changed a value; empty when it was none.
    explicit zoHPCStepName(const zoHPCTextDelta& delta, const QString& field = QString());

    const QString& text() const { return m_text; }
    // Items come or go with it.
    bool isStructural() const { return m_isStructural; }

private:
    struct Item;
    struct Kind;

    QString nameOfStructure(const Kind* kinds) const;
    static QString nameOfMove(const Kind& nodes);
    static QString nameOfValues(const Kind* kinds, const QString& field);
    static QString described(int tag, const QString& name);
    static QString counted(int tag, int count);

    QString m_text;
    bool m_isStructural = false;
};
