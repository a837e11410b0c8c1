#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

// Inputs of zohpc that are made to use up time or memory, of any size, to tell how the time grows with it.
struct zoHostileInput
{
    static constexpr int Mebibyte = 1024 * 1024;

    QByteArray name;
    QStringList command;                 // arguments of zohpc, which reads the text from standard input
    std::function<QByteArray(int)> text; // of about so many bytes
    // More arguments, as many as belong to a text of so many bytes; none without.
    std::function<QStringList(int)> more;

    // In the command, the place of a file that holds three quarters of the text, or half of it.
    static QString other() { return QStringLiteral("OTHER"); }
    static QString half() { return QStringLiteral("HALF"); }

    static const std::vector<zoHostileInput>& all();
};
