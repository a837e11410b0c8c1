#include "zoHostJournal.h"

#include "zoHostDocument.h"

#include <zoLog.h>

#include <QDir>

zoHostJournal::zoHostJournal(const zoHostDocument* document, QObject* parent) : QObject(parent)
{
    connect(document, &zoHostDocument::fileRead, this, [this](const QString& fileName) {
        // Whether it is a configuration turns out after it was read.
        const auto isUnderstood = std::make_shared<bool>(true);
        m_isUnderstood = isUnderstood;
        QMetaObject::invokeMethod(
            this,
            [fileName, isUnderstood] {
                if (*isUnderstood)
                    zoLog::info(tr("Configuration %1 loaded").arg(QDir::toNativeSeparators(fileName)));
            },
            Qt::QueuedConnection);
    });
    connect(document, &zoHostDocument::fileNotUnderstood, this, [this] {
        if (m_isUnderstood)
            *m_isUnderstood = false;
    });
    connect(document, &zoHostDocument::fileSaved, this, [](const QString& fileName) {
        zoLog::info(tr("Configuration %1 saved").arg(QDir::toNativeSeparators(fileName)));
    });
}

zoHostJournal::~zoHostJournal() = default;
