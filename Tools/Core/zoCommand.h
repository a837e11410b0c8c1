#pragma once

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

// One command of zohpc, such as "hosts expand": its options, its help text and its work.
class zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoCommand)

public:
    zoCommand() = default;
    virtual ~zoCommand();
    zoCommand(const zoCommand&) = delete;
    zoCommand& operator=(const zoCommand&) = delete;

    // Parses the arguments that follow the command's name, shows help or runs; returns the exit code. Wrong
    // usage is told on standard error.
    int run(const QStringList& arguments);

protected:
    // As typed after "zohpc": "hosts expand".
    virtual QString name() const = 0;
    virtual QString description() const = 0;
    // One example per entry: the command line, then a tab and what it does.
    virtual QStringList examples() const = 0;
    virtual void addArguments(QCommandLineParser& parser) const = 0;
    virtual int execute(const QCommandLineParser& parser) = 0;

    // Tells the mistake and where help is; returns the exit code for it.
    int usageError(const QString& reason) const;

private:
    QString helpText(const QCommandLineParser& parser) const;
};
