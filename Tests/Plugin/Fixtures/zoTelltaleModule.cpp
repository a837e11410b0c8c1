// A module that tells when any code of it has run: a static object does as soon as the library is opened.

#include <QByteArray>

namespace
{
const bool s_told = qputenv("ZO_TELLTALE", "opened");
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    qputenv("ZO_TELLTALE", s_told ? "called" : "");
}
