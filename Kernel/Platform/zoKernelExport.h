#pragma once

#include <QtGlobal>

#ifdef ZO_KERNEL_BUILD
#define ZO_KERNEL_EXPORT Q_DECL_EXPORT
#else
#define ZO_KERNEL_EXPORT Q_DECL_IMPORT
#endif
