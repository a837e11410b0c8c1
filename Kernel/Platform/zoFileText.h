#pragma once

#include <zoKernelExport.h>

#include <QByteArray>
#include <QString>

// The text of an XML file, decoded as its bytes ask for it.
class ZO_KERNEL_EXPORT zoFileText final
{
public:
    struct Place
    {
        int line = 1; // from 1
        int column = 1;
    };

    // A file is UTF-8 whenever its bytes can be: that is what configurations are, whatever their first line
    // says. Only bytes that are not are read as the first bytes of UTF-16, or else the declaration, say.
    // The text ends at the first NUL.
    explicit zoFileText(const QByteArray& bytes);

    // What could not be decoded became replacement characters.
    const QString& text() const { return m_text; }
    // The name of the encoding, in upper case.
    const QByteArray& encoding() const { return m_encoding; }

    bool isValid() const { return m_invalidAt < 0; }
    // Of what could not be decoded first.
    Place invalidPlace() const { return placeOf(m_text, m_invalidAt); }

    // Whether more than blanks and other NULs follow the first NUL.
    bool isCut() const { return m_isCut; }
    Place cutPlace() const { return placeOf(m_text, m_text.size()); }

    static Place placeOf(const QString& text, int offset);

private:
    bool readDeclared(const QByteArray& bytes);

    QString m_text;
    QByteArray m_encoding;
    int m_invalidAt = -1;
    bool m_isCut = false;
};
