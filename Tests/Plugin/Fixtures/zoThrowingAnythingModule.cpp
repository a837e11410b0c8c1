// A module that throws what is no exception of the standard library.

#include <QtGlobal>

namespace
{
struct Misfortune
{
    int code;
};
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    throw Misfortune{42};
}
