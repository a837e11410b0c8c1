#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>

// Base of all test classes: a warning or an error in the log that the test did not announce fails the test
// function that was running. A class with its own initTestCase() or cleanup() calls these first.
class zoTestCase : public QObject
{
    Q_OBJECT

public:
    zoTestCase();
    ~zoTestCase() override;

    // Announces one message of this type; it must arrive before the test function ends.
    void expectMessage(QtMsgType type, const QRegularExpression& pattern);

    // All messages since the test function began, for tests about the log itself.
    QStringList messages() const;

protected slots:
    void initTestCase();
    void cleanup();
};

// Main function of a test executable. Widgets draw offscreen unless the environment chose a platform.
#define ZO_TEST_MAIN(TestClass)                                                                              \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))                                                  \
            qputenv("QT_QPA_PLATFORM", "offscreen");                                                         \
        QApplication application(argc, argv);                                                                \
        application.setApplicationName(QStringLiteral(#TestClass));                                          \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
