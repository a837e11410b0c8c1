#include "zoCheckScene.h"

#include "zoRoomMath.h"
#include "zoStrokeDigits.h"
#include "zoTestScene.h"
#include "zoViewportPicture.h"

#include <QBuffer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace zoRoomMath;

namespace
{
// Layers, as shares of the distance from the head. Lines of the floor are where they are; all else has no place that
// anyone would measure.
constexpr double s_widestDisc = 1.02;
constexpr double s_discStep = 0.001;
constexpr double s_thinLine = 1.0005;
constexpr double s_edge = 0.9985;
// As far away as the floor reaches, in shares of the reach of the walls: depth buffers take no sky.
constexpr double s_horizon = 12.0;
constexpr int s_fast = 80; // for PNG, less work and larger

double rounded(double value, double unit)
{
    return std::round(value / unit) * unit;
}

QJsonArray toArray(const zoWallPoint& point)
{
    constexpr double Unit = 1.0 / 1024; // mm; a power of two has few digits
    return {rounded(point.x, Unit), rounded(point.y, Unit), rounded(point.z, Unit)};
}

// The pictures and planes of a wall, and what is in the room around it.
class SceneWriter final
{
public:
    SceneWriter(const zoWallSetup& setup, zoShowContent content)
        : m_setup(setup), m_content(content), m_scene(setup.walls, setup.head)
    {
    }

    QByteArray write()
    {
        const bool isTestImage = m_content == zoShowContent::TestImage;
        if (isTestImage)
            addRoom();
        addTiles();
        QJsonObject object{
            {QStringLiteral("content"), isTestImage ? QStringLiteral("test-image") : QStringLiteral("tiles")},
            {QStringLiteral("head"), toArray(m_setup.head)},
            {QStringLiteral("background"), (isTestImage ? zoTestScene::SkyColour : QColor(Qt::black)).name()},
            {QStringLiteral("tiles"), m_tiles}};
        if (isTestImage) {
            object.insert(QStringLiteral("figures"), m_figures);
            object.insert(QStringLiteral("balls"), m_balls);
            object.insert(QStringLiteral("digits"), digits());
            object.insert(QStringLiteral("marks"), m_marks);
        }
        return QJsonDocument(object).toJson(QJsonDocument::Compact);
    }

private:
    // Seen from the head in the same place.
    zoWallPoint moved(const zoWallPoint& point, double share) const
    {
        return at(m_setup.head, share, difference(point, m_setup.head), 0.0, {});
    }

    void add(const zoTestScene::Figure& figure, double share)
    {
        QJsonArray corners;
        for (const zoWallPoint& corner : figure.corners)
            corners.append(toArray(moved(corner, share)));
        m_figures.append(QJsonObject{{QStringLiteral("colour"), figure.colour.name()},
                                     {QStringLiteral("corners"), corners}});
    }

    void add(const zoTestScene::Number& number, double share)
    {
        const int count = number.digits.size();
        for (int i = 0; i < count; ++i) {
            const zoWallPoint middle =
                at(number.middle, zoStrokeDigits::place(i, count), number.right, 0.0, number.up);
            m_marks.append(QJsonObject{{QStringLiteral("digit"), number.digits[i].digitValue()},
                                       {QStringLiteral("middle"), toArray(moved(middle, share))},
                                       {QStringLiteral("right"), toArray(scaled(share, number.right))},
                                       {QStringLiteral("up"), toArray(scaled(share, number.up))},
                                       {QStringLiteral("colour"), number.colour.name()}});
        }
    }

    void addRoom()
    {
        double share = s_widestDisc;
        for (const zoTestScene::Figure& disc : m_scene.floor()) {
            add(disc, share);
            share -= s_discStep;
        }
        const std::vector<zoTestScene::Figure> lines = m_scene.floorLines();
        // Thin lines have another colour than the first, which is a thick one.
        for (const zoTestScene::Figure& line : lines)
            add(line, line.colour == lines.front().colour ? 1.0 : s_thinLine);
        const std::vector<zoTestScene::Figure> horizon = m_scene.horizon();
        const double toHorizon =
            m_scene.reach() * s_horizon / length(difference(horizon.front().corners.front(), m_setup.head));
        for (const zoTestScene::Figure& figure : horizon)
            add(figure, toHorizon);
        for (const zoTestScene::Number& number : m_scene.directions())
            add(number, toHorizon);
        for (const zoTestScene::Figure& edge : m_scene.edges())
            add(edge, s_edge);
        for (const zoTestScene::Ball& ball : m_scene.balls())
            addBall(ball);
    }

    void addBall(const zoTestScene::Ball& ball)
    {
        m_balls.append(QJsonObject{{QStringLiteral("middle"), toArray(ball.middle)},
                                   {QStringLiteral("radius"), ball.radius},
                                   {QStringLiteral("colour"), ball.colour.name()}});
        // Before the ball instead of in it.
        const zoTestScene::Number number = m_scene.numberOf(ball, m_setup.head);
        const double before = length(difference(ball.middle, m_setup.head)) - 1.01 * ball.radius;
        add(number, before / length(difference(number.middle, m_setup.head)));
    }

    static QJsonArray digits()
    {
        QJsonArray result;
        for (int digit = 0; digit < 10; ++digit) {
            QJsonArray pieces;
            for (const QPolygonF& piece : zoStrokeDigits::pieces(digit)) {
                QJsonArray corners;
                for (const QPointF& corner : piece)
                    corners.append(
                        QJsonArray{rounded(corner.x(), 1.0 / 4096), rounded(corner.y(), 1.0 / 4096)});
                pieces.append(corners);
            }
            result.append(pieces);
        }
        return result;
    }

    static QSize pixelsOf(const zoWallWindow& window, const zoWallViewport& viewport)
    {
        return zoViewportPicture::rectIn(window.geometry.size(), viewport).size();
    }

    void addTiles()
    {
        qint64 pixels = 0;
        forEachTile([&](const zoWallNode&, const zoWallWindow& window, const zoWallViewport& viewport) {
            const QSize size = pixelsOf(window, viewport);
            pixels += qint64(size.width()) * size.height();
        });
        const double scale =
            std::min(1.0, std::sqrt(double(zoCheckScene::MostPixels) / double(std::max<qint64>(pixels, 1))));
        forEachTile([&](const zoWallNode& node, const zoWallWindow& window, const zoWallViewport& viewport) {
            const QSize size = pixelsOf(window, viewport);
            const zoWallPlane& plane = viewport.plane;
            const zoWallPoint upperLeft =
                sum(plane.lowerLeft, difference(plane.upperRight, plane.lowerRight));
            QJsonObject tile{
                {QStringLiteral("number"), viewport.number},
                {QStringLiteral("node"), node.id},
                {QStringLiteral("plane"),
                 QJsonArray{toArray(plane.lowerLeft), toArray(plane.lowerRight), toArray(upperLeft)}},
                {QStringLiteral("pixels"), QJsonArray{size.width(), size.height()}},
                {QStringLiteral("label"), viewport.tile}};
            if (m_content != zoShowContent::TestImage)
                tile.insert(QStringLiteral("picture"), picture(node, window, viewport, size, scale));
            m_tiles.append(tile);
        });
    }

    template <class Visit>
    void forEachTile(Visit visit) const
    {
        for (const zoWallNode& node : m_setup.nodes) {
            for (const zoWallWindow& window : node.windows) {
                for (const zoWallViewport& viewport : window.viewports)
                    visit(node, window, viewport);
            }
        }
    }

    QString picture(const zoWallNode& node, const zoWallWindow& window, const zoWallViewport& viewport,
                    const QSize& size, double scale) const
    {
        QImage image((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
        if (image.isNull())
            return {};
        image.fill(Qt::black);
        QPainter painter(&image);
        const zoViewportPicture shown({&m_setup, &m_scene, &node, &window, &viewport, m_content}, size);
        const zoStereoMode::Eye eye = zoStereoMode::isForBothEyes(shown.mode())
                                          ? zoStereoMode::Eye::Middle
                                          : zoStereoMode::onlyEye(shown.mode());
        if (m_content == zoShowContent::Tiles)
            shown.paintEye(painter, image.rect(), eye);
        painter.end();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG", s_fast);
        return QString::fromLatin1(bytes.toBase64());
    }

    const zoWallSetup& m_setup;
    zoShowContent m_content;
    zoTestScene m_scene;
    QJsonArray m_figures;
    QJsonArray m_balls;
    QJsonArray m_marks;
    QJsonArray m_tiles;
};
} // namespace

QByteArray zoCheckScene::of(const zoWallSetup& setup, zoShowContent content)
{
    return SceneWriter(setup, content).write();
}
