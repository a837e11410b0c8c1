// A plug-in of Qt for another program, which happens to have an entry of the same name.

#include <QObject>
#include <QtPlugin>

namespace
{
const bool s_told = qputenv("ZO_TELLTALE", "opened");
} // namespace

class zoOtherPlugin final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Editor.Filter")
};

extern "C" Q_DECL_EXPORT void initPlugin()
{
    qputenv("ZO_TELLTALE", s_told ? "called" : "");
}

#include "zoOtherPlugin.moc"
