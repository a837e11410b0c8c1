#pragma once

#include <QByteArray>
#include <QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

// What Qt 5 and Qt 6 do differently is told apart in this header alone.

// Of overrides of what is const in Qt 5 only.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#define ZO_QT5_CONST const
#else
#define ZO_QT5_CONST
#endif

namespace zoQt
{
// The encoding of QString::fromLocal8Bit().
inline QByteArray localEncoding()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QTextCodec::codecForLocale()->name();
#else
    return "UTF-8"; // in every locale
#endif
}
} // namespace zoQt
