// A module that needs a symbol which nobody defines.

#include <QtGlobal>

extern "C" void zoSymbolThatNobodyDefines();

extern "C" Q_DECL_EXPORT void initPlugin()
{
    zoSymbolThatNobodyDefines();
}
