#pragma once

#include <QByteArray>
#include <QStringList>

// One finished run of a program: what it wrote and how it ended.
struct zoCommandRun
{
    QByteArray output;
    QByteArray errors;
    int exitCode = -1; // -1 when it did not start or crashed

    // Output, errors and exit code as one text, so that one comparison shows all three.
    QByteArray whole() const;

    static zoCommandRun zohpc(const QStringList& arguments, const QByteArray& input = QByteArray());
    // Without a display, a home and any variable but `environment` and those of the sanitizers.
    static zoCommandRun zohpcIn(const QStringList& environment, const QStringList& arguments,
                                const QByteArray& input = QByteArray());
    static zoCommandRun program(const QString& program, const QStringList& arguments, const QByteArray& input,
                                const QStringList& environment);
};
