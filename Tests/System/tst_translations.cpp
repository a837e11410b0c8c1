#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QTranslator>

namespace
{
constexpr int ProcessTimeoutMs = 60000;

struct Message
{
    QString context;
    QString comment;
    QString source;
    QStringList translations; // several when it counts something
    bool isPlural = false;
};

QStringList files()
{
    return QDir(ZO_SOURCE_DIR "/Data/translations").entryList({"*.ts"});
}

QVector<Message> messagesOf(const QString& file)
{
    QVector<Message> messages;
    QFile device(QStringLiteral(ZO_SOURCE_DIR "/Data/translations/") + file);
    QDomDocument document;
    if (!device.open(QIODevice::ReadOnly) || !document.setContent(&device))
        return messages;
    const QDomNodeList elements = document.elementsByTagName("message");
    for (int i = 0; i < elements.count(); ++i) {
        const QDomElement element = elements.at(i).toElement();
        Message message;
        message.context = element.parentNode().firstChildElement("name").text();
        message.comment = element.firstChildElement("comment").text();
        message.source = element.firstChildElement("source").text();
        const QDomElement translation = element.firstChildElement("translation");
        message.isPlural = element.attribute("numerus") == QLatin1String("yes");
        if (message.isPlural) {
            for (QDomElement form = translation.firstChildElement(); !form.isNull();
                 form = form.nextSiblingElement())
                message.translations << form.text();
        } else {
            message.translations << translation.text();
        }
        messages << message;
    }
    return messages;
}

// In order: %1, %n, line ends, patterns of files, tags.
QStringList fixedPartsOf(const QString& text)
{
    static const QRegularExpression parts(
        QStringLiteral("%L?(\\d+|n)|\\n|\\*\\.\\w+|;;|</?\\w+/?>|--[a-z-]+"));
    QStringList found;
    QRegularExpressionMatchIterator it = parts.globalMatch(text);
    while (it.hasNext())
        found << it.next().captured();
    found.sort();
    return found;
}

int mnemonicsIn(const QString& text)
{
    static const QRegularExpression mnemonic(QStringLiteral("&\\w"));
    return text.count(mnemonic);
}

// Blanks, dots, a colon or a line end, which callers and the look of windows count on.
QString endOf(const QString& text)
{
    static const QRegularExpression end(QStringLiteral("( ?\\.\\.\\.|[: \\n])*$"));
    return end.match(text).captured();
}

QString startOf(const QString& text)
{
    static const QRegularExpression start(QStringLiteral("^[ \\n]*"));
    return start.match(text).captured();
}
} // namespace

// The translations in Data/translations against the sources, and what the build made of them.
class tst_translations final : public zoTestCase
{
    Q_OBJECT

private slots:
    void everyTextOfTheSourcesIsTranslated();
    void fixedPartsAreKept_data();
    void fixedPartsAreKept();
    void buildHoldsEveryTranslation_data();
    void buildHoldsEveryTranslation();
    void textsForTheLogAreTranslated();

private:
    static void addFiles();
};

void tst_translations::addFiles()
{
    QTest::addColumn<QString>("file");
    for (const QString& file : files())
        QTest::newRow(qPrintable(file)) << file;
}

// A fresh run over the sources finds nothing new, nothing gone and nothing without a translation.
void tst_translations::everyTextOfTheSourcesIsTranslated()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LUPDATE", ZO_LUPDATE);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(ZO_SOURCE_DIR "/dev/translations", {"--check"});

    QVERIFY(process.waitForFinished(ProcessTimeoutMs));
    const QByteArray said = process.readAll();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, said.constData());
    QVERIFY(!files().isEmpty());
    QCOMPARE(said.count(": complete\n"), files().size());
}

void tst_translations::fixedPartsAreKept_data()
{
    addFiles();
}

void tst_translations::fixedPartsAreKept()
{
    QFETCH(QString, file);
    const QVector<Message> messages = messagesOf(file);
    QVERIFY(messages.size() > 50);

    QStringList wrong;
    for (const Message& message : messages) {
        if (message.isPlural && message.translations.size() != 2)
            wrong << message.source;
        for (const QString& text : message.translations) {
            if (text.isEmpty() || fixedPartsOf(text) != fixedPartsOf(message.source) ||
                mnemonicsIn(text) != mnemonicsIn(message.source) || endOf(text) != endOf(message.source) ||
                startOf(text) != startOf(message.source))
                wrong << message.source + " -> " + text;
        }
    }

    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

void tst_translations::buildHoldsEveryTranslation_data()
{
    addFiles();
}

void tst_translations::buildHoldsEveryTranslation()
{
    QFETCH(QString, file);
    QTranslator translator;
    QVERIFY(translator.load(ZO_TRANSLATION_DIR "/" + file.chopped(3) + ".qm"));

    QStringList wrong;
    for (const Message& message : messagesOf(file)) {
        const QString text = translator.translate(message.context.toUtf8(), message.source.toUtf8(),
                                                  message.comment.toUtf8(), message.isPlural ? 1 : -1);
        if (text != message.translations.constFirst())
            wrong << message.source + " -> " + text;
    }

    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

// People read the log in the host's window, scripts read two of its lines.
void tst_translations::textsForTheLogAreTranslated()
{
    const QRegularExpression literal(QStringLiteral("zoLog::(info|error)\\(\\s*\"(?!%s\",\\s|Network %d not "
                                                    "found\\.\"|Unable to load cluster config %s\")"));
    QStringList wrong;
    int calls = 0;
    for (const char* folder : {"/Host", "/Plugins/Module"}) {
        QDirIterator it(QLatin1String(ZO_SOURCE_DIR) + QLatin1String(folder), {"*.cpp", "*.h"}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile source(it.next());
            QVERIFY(source.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(source.readAll());
            calls += text.count("zoLog::");
            QRegularExpressionMatchIterator found = literal.globalMatch(text);
            while (found.hasNext())
                wrong << QStringLiteral("%1: %2").arg(source.fileName(),
                                                      text.mid(found.next().capturedStart(), 60));
        }
    }

    QVERIFY(calls > 20);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

ZO_TEST_MAIN(tst_translations)
#include "tst_translations.moc"
