#pragma once

#include <zoKernelExport.h>

#include <QIcon>
#include <QPixmap>

// The host's artwork by name. An icon has an On and an Off picture (a running server, a stopped one) where
// that means something, in any size.
class ZO_KERNEL_EXPORT zoIconManager final
{
public:
    // An empty icon for an unknown name. `theme` selects a variant of the artwork; empty is the standard one,
    // and an unknown theme falls back to it.
    static QIcon getIcon(const QString& name, const QString& theme);

    // The Off picture at the medium icon size; null for an unknown name.
    static QPixmap getPixmap(const QString& name, const QString& theme); // for modules and tests
};
