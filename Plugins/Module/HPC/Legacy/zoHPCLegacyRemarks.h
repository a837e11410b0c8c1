#pragma once

#include "zoHPCLegacyRemark.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

class zoHPCLegacyParameters;

// Collects what a conversion drops or changes by rule, in the order in which it meets it; reads the numbers of
// the legacy configuration, which are 0 where they are invalid.
class zoHPCLegacyRemarks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    using Kind = zoHPCLegacyRemark::Kind;

    explicit zoHPCLegacyRemarks(const zoHPCLegacyParameters& parameters); // outlives this

    void clear();
    void add(Kind kind, const QString& text, const QString& aboutParameter);

    // Numbers of the parameters; an invalid one is remarked at once.
    int intParameter(const char* name, const char* defaultValue);
    double doubleParameter(const char* name, const char* defaultValue);

    // Numbers of the layout's entries. The invalid ones are counted, for one remark on all of them.
    void setEntry(int entry); // that is being read
    int intField(const QString& text);
    double doubleField(const QString& text);
    void addUnreadFields();

    // With their places; reads the legacy text again.
    QList<zoHPCLegacyRemark> withPlaces() const;

private:
    void addInvalidNumber(const char* name, const QString& text);
    void countUnreadField();

    const zoHPCLegacyParameters& m_parameters;
    QList<zoHPCLegacyRemark> m_remarks; // without their places
    int m_entry = 0;
    int m_unreadFields = 0;
    QString m_unreadParameter; // with the first of them
};
