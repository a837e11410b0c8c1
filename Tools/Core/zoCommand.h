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
    // usage is told on standard error. `name` is what was typed after "zohpc": "hosts expand".
    int run(const QString& name, const QStringList& arguments);

protected:
    virtual QString description() const = 0;
    // One example per entry: the command line, then a tab and what it does.
    virtual QStringList examples() const = 0;
    virtual void addArguments(QCommandLineParser& parser) const = 0;
    // Options such as "--explain" that may be the last word without their value, which is empty then.
    virtual QStringList optionsWithoutValue() const { return {}; }
    // Options with a value that may be given more than once; of others a second value is refused.
    virtual QStringList repeatableOptions() const { return {}; }
    virtual int execute(const QCommandLineParser& parser) = 0;

    // Of the command that runs.
    const QString& name() const { return m_name; }
    // Tells the mistake and where help is; returns the exit code for it.
    int usageError(const QString& reason) const;

private:
    // The option that was meant; empty when no known one is near.
    QString meantOption(const QCommandLineParser& parser, const QStringList& arguments) const;
    // The option that was given twice though only one of its values would count; empty for none.
    QString repeatedOption(const QCommandLineParser& parser) const;
    QString helpText(const QCommandLineParser& parser) const;

    QString m_name;
};
