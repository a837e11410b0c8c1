#pragma once

#include <QString>

#include <memory>

class zoHPCDisplayItem;
class zoHPCProjectionItem;

// What was copied in the display setup: a projection, and a display, window or viewport. Each is kept as a copy
// of its own, with all below it.
class zoHPCDisplayClipboard final
{
public:
    zoHPCDisplayClipboard();
    ~zoHPCDisplayClipboard();

    bool hasProjection() const { return m_projection != nullptr; }
    bool hasOutput() const { return m_output != nullptr; }
    // Null before the first copy.
    const zoHPCDisplayItem* output() const { return m_output.get(); }

    // The source gets a new identifier: its tiles have to follow, and viewports find them again by name.
    void copyProjection(zoHPCProjectionItem& source);
    void copyOutput(zoHPCDisplayItem& source);

    // New items to be put into a tree; null when nothing was copied.
    std::unique_ptr<zoHPCProjectionItem> newProjection(const QString& name) const;
    std::unique_ptr<zoHPCDisplayItem> newOutput() const;

private:
    std::shared_ptr<zoHPCProjectionItem> m_projection;
    std::shared_ptr<zoHPCDisplayItem> m_output;
};
