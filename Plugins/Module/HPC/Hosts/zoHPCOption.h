#pragma once

#include <QString>

// Keys of a host-tree item's option map and attribute names in the configuration document. Compared exactly.
namespace zoHPCOption
{
extern const QString Enabled;
extern const QString RenderNode;
extern const QString NetworkType;
extern const QString LinkSpeed;
extern const QString SceneCompression;
extern const QString ImageCompression;
extern const QString Description;
extern const QString IbDevice;
extern const QString IbPort;
extern const QString ServicePort;
extern const QString PixelFormat;
extern const QString StartStopAction;
extern const QString ParallelFrames;
extern const QString FramePipelineLength;
extern const QString StillFrameSupersampling;
extern const QString NodesFile;
extern const QString Encrypted;
extern const QString Homogeneous;

// An option as a sentence calls it, "link speed"; a key that is no option stands for itself.
QString words(const QString& key);
} // namespace zoHPCOption
