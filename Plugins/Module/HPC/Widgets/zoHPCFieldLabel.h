#pragma once

#include <QString>

class QWidget;

// What people call a field of a form: the label beside it, or what is written on it.
class zoHPCFieldLabel final
{
public:
    zoHPCFieldLabel() = delete;

    // Without mnemonic and colon; empty for what is no field.
    static QString of(const QWidget& field);
    // Fields whose value comes together from several keys. Null is none.
    static bool isTypedInto(const QWidget* field);
};
