#include "zoHPCOption.h"

namespace
{
struct Entry
{
    const QString& key;
    const char* words;
};
} // namespace

// Plain QString objects, not literals in the library's read-only data: a text that outlives the library must
// not point into it.
namespace zoHPCOption
{
const QString Enabled = QString::fromLatin1("enabled");
const QString RenderNode = QString::fromLatin1("rendernode");
const QString NetworkType = QString::fromLatin1("network");
const QString LinkSpeed = QString::fromLatin1("speed");
const QString SceneCompression = QString::fromLatin1("scenecompression");
const QString ImageCompression = QString::fromLatin1("imagecompression");
const QString Description = QString::fromLatin1("description");
const QString IbDevice = QString::fromLatin1("ibdevice");
const QString IbPort = QString::fromLatin1("ibport");
const QString ServicePort = QString::fromLatin1("serviceport");
const QString PixelFormat = QString::fromLatin1("pixelformat");
const QString StartStopAction = QString::fromLatin1("startstopaction");
const QString ParallelFrames = QString::fromLatin1("parallelframes");
// The key is older than the constant's name; existing files depend on it.
const QString FramePipelineLength = QString::fromLatin1("framequeuelength");
const QString StillFrameSupersampling = QString::fromLatin1("stillframesupersampling");
const QString NodesFile = QString::fromLatin1("nodesfile");
const QString Encrypted = QString::fromLatin1("encrypted");
const QString Homogeneous = QString::fromLatin1("homogeneous");

QString words(const QString& key)
{
    static const Entry entries[] = {{Enabled, "enabled"},
                                    {RenderNode, "render node"},
                                    {NetworkType, "network type"},
                                    {LinkSpeed, "link speed"},
                                    {SceneCompression, "scene compression"},
                                    {ImageCompression, "image compression"},
                                    {Description, "description"},
                                    {IbDevice, "InfiniBand device"},
                                    {IbPort, "InfiniBand port"},
                                    {ServicePort, "service port"},
                                    {PixelFormat, "pixel format"},
                                    {StartStopAction, "start/stop action"},
                                    {ParallelFrames, "parallel frames"},
                                    {FramePipelineLength, "frame queue length"},
                                    {StillFrameSupersampling, "still-frame supersampling"},
                                    {NodesFile, "hosts file"},
                                    {Encrypted, "encryption"},
                                    {Homogeneous, "homogeneous nodes"}};
    for (const Entry& entry : entries) {
        if (entry.key == key)
            return QString::fromLatin1(entry.words);
    }
    return key;
}
} // namespace zoHPCOption
