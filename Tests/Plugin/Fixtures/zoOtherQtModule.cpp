// A module for the other major version of Qt, as that of Qt 5.15 and Qt 6.4 write their metadata; it tells when any code of
// it has run.

#include <QByteArray>

#if QT_VERSION_MAJOR == 5
#define OTHER_QT "\6\4"
// A note of the file: sizes of its name and of what it holds, its type.
__attribute__((section(".note.qt.metadata"), used, aligned(4))) const char s_note[] =
    "\14\0\0\0\120\0\0\0\1\0\121\164"
    "qt-project!\0"
#else
#define OTHER_QT "\5\17"
__attribute__((section(".qtmetadata"), used)) const char s_metadata[] =
#endif
    "QTMETADATA !\0" OTHER_QT "\1"
    "\277\2\154io.zo.Module\4\244"
    "\144name\145Other\147version\1433.0\147licence\143MIT\151interface\1"
    "\377";

namespace
{
const bool s_told = qputenv("ZO_TELLTALE", "opened");
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    qputenv("ZO_TELLTALE", s_told ? "called" : "");
}
