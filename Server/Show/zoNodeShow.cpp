#include "zoNodeShow.h"

#include "zoGLProbe.h"
#include "zoGLSurface.h"
#include "zoRasterSurface.h"
#include "zoShowWindow.h"
#include "zoWallScreens.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

void zoNodeShow::prepareApplication()
{
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                             "QT_DEVICE_PIXEL_RATIO"})
        qunsetenv(name);
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0"); // not even by the platform, as Qt 6 would
}

zoNodeShow::zoNodeShow(zoWallSetup setup, QObject* parent)
    : QObject(parent), m_setup(std::move(setup)), m_scene(m_setup.walls, m_setup.head)
{
    for (const zoWallNode& node : m_setup.nodes) {
        for (const zoWallWindow& window : node.windows) {
            Window entry;
            entry.picture = std::make_unique<zoWindowPicture>(m_setup, m_scene, node, window);
            m_windows.push_back(std::move(entry));
        }
    }
}

zoNodeShow::~zoNodeShow() = default;

QString zoNodeShow::windowName(int window) const
{
    return m_windows.at(std::size_t(window)).picture->name();
}

QStringList zoNodeShow::open()
{
    close();
    QStringList failures;
    for (int i = 0; i < windowCount(); ++i) {
        const QString failure = openWindow(i);
        if (!failure.isEmpty())
            failures.append(tr("window %1: %2").arg(windowName(i), failure));
    }
    if (!failures.isEmpty()) {
        close();
        return failures;
    }
    m_isOpen = true;
    for (Window& window : m_windows)
        window.surface->window().show();
    draw();
    finish();
    swap();
    return {};
}

QString zoNodeShow::openWindow(int index)
{
    Window& entry = m_windows[std::size_t(index)];
    const bool isRehearsal = std::size_t(index) < m_places.size();
    zoWallScreens::Place place;
    if (isRehearsal) {
        place.screen = QGuiApplication::primaryScreen();
        place.geometry = m_places[std::size_t(index)];
    } else {
        place = zoWallScreens::find(entry.picture->window());
        if (place.screen == nullptr)
            return place.failure;
    }
    entry.picture->setFramed(isRehearsal);
    const bool isGL = takesGL(*entry.picture);
    if (isGL && !zoGLProbe::machine().isAvailable)
        return tr("no GL 3.3: %1").arg(zoGLProbe::machine().renderer);
    zoGLSurface* gl = nullptr;
    if (isGL) {
        auto surface = std::make_unique<zoGLSurface>(entry.picture->wantsQuadBuffer(),
                                                     !isRehearsal && entry.picture->window().hardwareSync);
        gl = surface.get();
        entry.surface = std::move(surface);
    } else {
        entry.surface = std::make_unique<zoRasterSurface>();
    }
    zoShowWindow& window = entry.surface->window();
    // A window manager would move what has a place of its own, and without one nothing else fills a screen. In a
    // rehearsal the keys stay with the window in which a person works.
    const Qt::WindowFlags bypass = isRehearsal ? Qt::WindowDoesNotAcceptFocus : Qt::BypassWindowManagerHint;
    window.setFlags(Qt::Window | Qt::FramelessWindowHint | bypass);
    window.setTitle(entry.picture->name());
    window.setScreen(place.screen);
    window.setGeometry(place.geometry);
    const QString failure = gl != nullptr ? gl->create() : QString();
    if (!failure.isEmpty())
        return failure;
    connect(&window, &zoShowWindow::exposed, this, [this, index] { noteExposed(index); });

    remark(*entry.picture, *entry.surface, gl, isRehearsal);
    return {};
}

// What a person who looks for the reason of what is seen wants to know.
void zoNodeShow::remark(const zoWindowPicture& picture, zoShowSurface& surface, const zoGLSurface* gl,
                        bool isRehearsal)
{
    const auto add = [this, &picture](const QString& text) {
        m_remarks.push_back({picture.node().id, text});
    };
    const QSize size = surface.window().size();
    const bool isSeen = isRehearsal || !zoWallScreens::areImaginary();
    add(tr("window %1: %2 × %3 pixels, %4")
            .arg(picture.name(), QString::number(size.width()), QString::number(size.height()),
                 isSeen ? surface.description() : tr("no display here, nobody sees it")));
    if (picture.wantsQuadBuffer() && (gl == nullptr || !gl->hasQuadBuffer()))
        add(tr("window %1: no quad buffer here, both eyes see one picture").arg(picture.name()));
    if (!isRehearsal && picture.window().hardwareSync && (gl == nullptr || !gl->isInSwapGroup()))
        add(tr("window %1: no hardware sync here, it is swapped together with the others without")
                .arg(picture.name()));
    const QSize meant = picture.window().geometry.size();
    if (!isRehearsal && meant != size)
        add(tr("window %1: the screen has %2 × %3 pixels, the configuration %4 × %5")
                .arg(picture.name(), QString::number(size.width()), QString::number(size.height()),
                     QString::number(meant.width()), QString::number(meant.height())));
}

// Drawn with GL where that is faster, or has what nothing else has.
bool zoNodeShow::takesGL(const zoWindowPicture& picture) const
{
    if (m_drawing != Drawing::Automatic)
        return m_drawing == Drawing::GL;
    if (zoWallScreens::areImaginary())
        return false;
    const zoGLProbe& machine = zoGLProbe::machine();
    return machine.isAvailable &&
           (machine.isHardware || (machine.hasQuadBuffer && picture.wantsQuadBuffer()) ||
            (machine.hasSwapGroup && picture.window().hardwareSync));
}

void zoNodeShow::close()
{
    for (Window& window : m_windows)
        window.surface.reset();
    m_remarks.clear();
    m_isOpen = false;
}

void zoNodeShow::setContent(zoShowContent content)
{
    m_content = content;
    for (Window& window : m_windows)
        window.picture->setContent(content);
}

void zoNodeShow::draw()
{
    for (Window& window : m_windows) {
        if (!window.surface)
            continue;
        window.drawnSize = window.surface->window().size();
        window.drawnContent = m_content;
        window.surface->draw(*window.picture);
    }
}

void zoNodeShow::finish()
{
    for (Window& window : m_windows) {
        if (window.surface)
            window.surface->finish();
    }
}

void zoNodeShow::swap()
{
    for (Window& window : m_windows) {
        if (window.surface)
            window.surface->swap();
    }
}

void zoNodeShow::noteExposed(int index)
{
    Window& entry = m_windows[std::size_t(index)];
    if (!entry.surface)
        return;
    if (entry.drawnSize != entry.surface->window().size()) {
        emit needsFrame();
        return;
    }
    // Not what the next frame will show: other windows of the wall do not show it yet.
    entry.picture->setContent(entry.drawnContent);
    entry.surface->repeat(*entry.picture);
    entry.picture->setContent(m_content);
}

QImage zoNodeShow::picture(int window) const
{
    const Window& entry = m_windows.at(std::size_t(window));
    const zoWindowPicture& picture = *entry.picture;
    if (entry.surface && !picture.isFramed())
        return entry.surface->frame(picture);
    const QSize size = picture.window().geometry.size();
    QImage image(size.expandedTo({1, 1}), QImage::Format_RGB32);
    zoWindowPicture bare = picture;
    bare.setFramed(false);
    bare.paint(image, picture.window().geometry.topLeft());
    return image;
}
