#include "zoTestCase.h"

#include <zoKernelServiceFactory.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryFile>

#include <cstdio>
#include <functional>
#include <unistd.h>

namespace
{
class FirstService : public zoBaseService
{
};

class SecondService : public zoBaseService
{
};

// What `action` prints on standard error.
QByteArray standardErrorOf(const std::function<void()>& action)
{
    QTemporaryFile file;
    if (!file.open())
        return "no temporary file";
    std::fflush(stderr);
    const int saved = dup(STDERR_FILENO);
    dup2(file.handle(), STDERR_FILENO);
    action();
    std::fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    file.seek(0);
    return file.readAll();
}
} // namespace

// The host's registry of services.
class tst_zoKernelServiceFactory final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        zoKernelServiceFactory::the().unregisterService<FirstService>();
        zoKernelServiceFactory::the().unregisterService<SecondService>();
    }
    void registeredServiceIsFound();
    void secondRegistrationReplacesTheFirst();
    void missingServiceIsNullAndSaidOnStandardError();
    void nullEntryIsNullAndSaidOnStandardError();
    void unregisteredServiceIsMissingAgain();
    void objectOfAnotherTypeIsNullWithoutAWord();
    void askingWhetherThereIsOneSaysNothing();
};

void tst_zoKernelServiceFactory::registeredServiceIsFound()
{
    FirstService first;
    SecondService second;

    zoKernelServiceFactory::the().registerService<FirstService>(&first);
    zoKernelServiceFactory::the().registerService<SecondService>(&second);

    QCOMPARE(zoKernelServiceFactory::getService<FirstService>(), &first);
    QCOMPARE(zoKernelServiceFactory::getService<SecondService>(), &second);
}

void tst_zoKernelServiceFactory::askingWhetherThereIsOneSaysNothing()
{
    FirstService first;
    SecondService second;
    const QByteArray said = standardErrorOf([&] {
        zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
        QVERIFY(!factory.hasService<FirstService>());
        factory.registerService<FirstService>(nullptr);
        QVERIFY(!factory.hasService<FirstService>());
        factory.registerService<FirstService>(&second);
        QVERIFY(!factory.hasService<FirstService>());
        factory.registerService<FirstService>(&first);
        QVERIFY(factory.hasService<FirstService>());
    });

    QCOMPARE(said, QByteArray());
}

void tst_zoKernelServiceFactory::secondRegistrationReplacesTheFirst()
{
    FirstService before;
    FirstService after;
    zoKernelServiceFactory::the().registerService<FirstService>(&before);

    zoKernelServiceFactory::the().registerService<FirstService>(&after);

    QCOMPARE(zoKernelServiceFactory::getService<FirstService>(), &after);
}

void tst_zoKernelServiceFactory::missingServiceIsNullAndSaidOnStandardError()
{
    FirstService* found = nullptr;

    const QByteArray said =
        standardErrorOf([&found] { found = zoKernelServiceFactory::getService<FirstService>(); });

    QVERIFY(found == nullptr);
    QCOMPARE(said, QByteArray("zoKernelServiceFactory: couldn't find class '") + typeid(FirstService).name() +
                       "'!\n");
}

void tst_zoKernelServiceFactory::nullEntryIsNullAndSaidOnStandardError()
{
    zoKernelServiceFactory::the().registerService<FirstService>(nullptr);
    FirstService* found = nullptr;

    const QByteArray said =
        standardErrorOf([&found] { found = zoKernelServiceFactory::getService<FirstService>(); });

    QVERIFY(found == nullptr);
    QCOMPARE(said,
             QByteArray("zoKernelServiceFactory: service '") + typeid(FirstService).name() + "' is NULL!\n");
}

void tst_zoKernelServiceFactory::unregisteredServiceIsMissingAgain()
{
    FirstService first;
    zoKernelServiceFactory::the().registerService<FirstService>(&first);

    zoKernelServiceFactory::the().unregisterService<FirstService>();

    standardErrorOf([] { QVERIFY(zoKernelServiceFactory::getService<FirstService>() == nullptr); });
}

void tst_zoKernelServiceFactory::objectOfAnotherTypeIsNullWithoutAWord()
{
    SecondService second;
    zoKernelServiceFactory::the().registerService<FirstService>(&second);
    FirstService* found = nullptr;

    const QByteArray said =
        standardErrorOf([&found] { found = zoKernelServiceFactory::getService<FirstService>(); });

    QVERIFY(found == nullptr);
    QCOMPARE(said, QByteArray());
}

ZO_TEST_MAIN(tst_zoKernelServiceFactory)
#include "tst_zoKernelServiceFactory.moc"
