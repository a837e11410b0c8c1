#pragma once

#include <QEvent>
#include <QObject>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <functional>

// Records what a module's window tells the host of its document, as hosts hear it: by the events of the window.
class zoDocumentSpy final : public QObject
{
public:
    explicit zoDocumentSpy(QWidget* window) { window->installEventFilter(this); }

    int titles = 0;       // changes of the file or the title
    int marks = 0;        // changes of the unsaved mark
    QStringList replaced; // texts of documents that were about to go
    std::function<void()> onReplaced;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::WindowTitleChange:
            ++titles;
            break;
        case QEvent::ModifiedChange:
            ++marks;
            break;
        case QEvent::DynamicPropertyChange: {
            const QVariant text = watched->property("replacedConfiguration");
            if (!text.isValid())
                break;
            replaced << text.toString();
            if (onReplaced)
                onReplaced();
            break;
        }
        default:
            break;
        }
        return false;
    }
};
