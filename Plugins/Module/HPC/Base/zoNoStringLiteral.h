#pragma once

// Included ahead of every source of the module, so that a slip does not compile. The reason stands in
// zoText.h.
#include <QString>

#undef QStringLiteral
#define QStringLiteral(text)                                                                                 \
    [] {                                                                                                     \
        static_assert(sizeof(text) == 0, "the module can be unloaded: zoText() instead of QStringLiteral");  \
        return QString();                                                                                    \
    }()
