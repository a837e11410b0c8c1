#include "zoHPCDisplayClipboard.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCProjectionItem.h"

zoHPCDisplayClipboard::zoHPCDisplayClipboard() = default;

zoHPCDisplayClipboard::~zoHPCDisplayClipboard() = default;

void zoHPCDisplayClipboard::copyProjection(zoHPCProjectionItem& source)
{
    m_projection.reset(source.clone());
}

void zoHPCDisplayClipboard::copyOutput(zoHPCDisplayItem& source)
{
    m_output.reset(source.clone());
}

std::unique_ptr<zoHPCProjectionItem> zoHPCDisplayClipboard::newProjection(const QString& name) const
{
    if (!m_projection)
        return nullptr;
    std::unique_ptr<zoHPCProjectionItem> projection(m_projection->clone());
    projection->setName(name);
    projection->update();
    return projection;
}

std::unique_ptr<zoHPCDisplayItem> zoHPCDisplayClipboard::newOutput() const
{
    return std::unique_ptr<zoHPCDisplayItem>(m_output ? m_output->clone() : nullptr);
}
