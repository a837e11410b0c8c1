#include "zoHPCWindowTest.h"

const char* const zoHPCWindowTest::s_document =
    "<cluster version=\"1\">\n"
    " <master scenecompression=\"best\">\n"
    "  <network>\n"
    "   <node name=\"a\"/>\n"
    "   <node name=\"b\"/>\n"
    "   <node name=\"a\"/>\n"
    "  </network>\n"
    " </master>\n"
    " <display eyeseparation=\"65\" user=\"1\" hardwaresync=\"false\">\n"
    "  <window node=\"a 2\" screen=\"0\" x=\"0\" y=\"0\" width=\"1280\" height=\"1024\""
    " fullscreen=\"true\"/>\n"
    " </display>\n"
    "</cluster>\n";

void zoHPCWindowTest::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
}

void zoHPCWindowTest::cleanup()
{
    m_window.reset();
    m_folder.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

QByteArray zoHPCWindowTest::contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

void zoHPCWindowTest::write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QAction* zoHPCWindowTest::action(const char* text) const
{
    const QList<QAction*> actions = m_window->findChildren<QAction*>();
    for (QAction* candidate : actions) {
        if (candidate->text() == QLatin1String(text))
            return candidate;
    }
    return nullptr;
}
