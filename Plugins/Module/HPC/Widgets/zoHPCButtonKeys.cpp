#include "zoHPCButtonKeys.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QPushButton>

#include <utility>

void zoHPCButtonKeys::addTo(const QDialogButtonBox& box)
{
    const std::pair<QDialogButtonBox::StandardButton, const char*> texts[] = {
        {QDialogButtonBox::Ok, QT_TRANSLATE_NOOP("zoHPCButtonKeys", "&OK")},
        {QDialogButtonBox::Cancel, QT_TRANSLATE_NOOP("zoHPCButtonKeys", "&Cancel")},
        {QDialogButtonBox::Apply, QT_TRANSLATE_NOOP("zoHPCButtonKeys", "&Apply")}};
    for (const auto& text : texts) {
        QPushButton* const button = box.button(text.first);
        if (button && button->shortcut().isEmpty())
            button->setText(QCoreApplication::translate("zoHPCButtonKeys", text.second));
    }
}
