#pragma once

#include "zoHPCOption.h"

#include <QLatin1String>
#include <QString>

#include <cstddef>
#include <iterator>

// One value that an option may hold, as a row of a combo box of the node editor: what a person reads and what the
// option holds. The empty value is the default. Texts are translated in the context of zoHPCTreeEditGUIW.
struct zoHPCComboRow
{
    const char* text;
    const char* value;
};

namespace zoHPCOptionValues
{
inline constexpr zoHPCComboRow NetworkTypes[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Ethernet"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Infiniband"), "infiniband"},
};

inline constexpr zoHPCComboRow NetworkSpeeds[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Auto"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Internet"), "wan"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "1 Gigabit"), "1g"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "10 Gigabit"), "10g"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "10G uplink to 1G"), "10g1g"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "40 Gigabit"), "40g"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "40G uplink to 10G"), "40g10g"},
};

inline constexpr zoHPCComboRow SceneCompressions[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Off"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Medium"), "fast"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "High"), "best"},
};

inline constexpr zoHPCComboRow ImageCompressions[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Off"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Low (Lossless)"), "lossless"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Medium (Lossy)"), "lossyfast"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "High (Lossy)"), "lossybest"},
};

// The row numbers count: 1, 2 and 3 are the flags of startStopActionsChanged().
inline constexpr zoHPCComboRow StartStopActions[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Do nothing"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Downscale Off / On"), "downscale"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Raytracing On / Off"), "raytracing"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Rendering On / Off"), "rendering"},
};

inline constexpr zoHPCComboRow StillSupersamplings[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Off"), ""},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "2x2"), "1"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "3x3"), "2"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "4x4"), "3"},
};

// Parallel frames and frame buffers.
inline constexpr zoHPCComboRow FrameCounts[] = {
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "Auto"), ""}, {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "1"), "1"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "2"), "2"},   {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "3"), "3"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "4"), "4"},   {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "5"), "5"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "6"), "6"},   {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "7"), "7"},
    {QT_TRANSLATE_NOOP("zoHPCTreeEditGUIW", "8"), "8"},
};

// An option that a combo box shows: values without a row are replaced when somebody looks at the item.
struct ComboOption
{
    const QString* option;
    const zoHPCComboRow* rows;
    std::size_t count;

    bool hasRow(const QString& value) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (value == QLatin1String(rows[i].value))
                return true;
        }
        return false;
    }
};

inline const ComboOption MasterOptions[] = {
    {&zoHPCOption::SceneCompression, SceneCompressions, std::size(SceneCompressions)},
    {&zoHPCOption::ImageCompression, ImageCompressions, std::size(ImageCompressions)},
    {&zoHPCOption::StartStopAction, StartStopActions, std::size(StartStopActions)},
    {&zoHPCOption::StillFrameSupersampling, StillSupersamplings, std::size(StillSupersamplings)},
    {&zoHPCOption::ParallelFrames, FrameCounts, std::size(FrameCounts)},
    {&zoHPCOption::FramePipelineLength, FrameCounts, std::size(FrameCounts)},
};

inline const ComboOption NetworkOptions[] = {
    {&zoHPCOption::NetworkType, NetworkTypes, std::size(NetworkTypes)},
    {&zoHPCOption::LinkSpeed, NetworkSpeeds, std::size(NetworkSpeeds)},
};
} // namespace zoHPCOptionValues
