// A library that loads but is no module: it lacks initPlugin().

#include <QtGlobal>

extern "C" Q_DECL_EXPORT int zoNoEntry()
{
    return 1;
}
