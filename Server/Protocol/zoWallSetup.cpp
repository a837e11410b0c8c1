#include "zoWallSetup.h"

#include <QJsonArray>
#include <QJsonValue>

#include <cmath>

namespace
{
// Beyond these no window or wall is meant: the value is damaged.
constexpr double FurthestPixel = 1000000.0;
constexpr double LargestWall = 1.0e9;    // pixels: many windows stand side by side
constexpr double FurthestPlace = 1.0e12; // pixels
constexpr double FurthestPoint = 1.0e9;  // mm
constexpr int MostTiles = 100000;

QJsonArray toArray(const zoWallPoint& point)
{
    return {point.x, point.y, point.z};
}

QJsonArray toArray(const QRectF& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QJsonObject toObject(const zoWallPlane& plane)
{
    return {{QStringLiteral("name"), plane.name},
            {QStringLiteral("lowerLeft"), toArray(plane.lowerLeft)},
            {QStringLiteral("lowerRight"), toArray(plane.lowerRight)},
            {QStringLiteral("upperRight"), toArray(plane.upperRight)}};
}

QJsonObject toObject(const zoWallViewport& viewport)
{
    const zoWallNeighbours& near = viewport.neighbours;
    return {
        {QStringLiteral("number"), viewport.number},
        {QStringLiteral("area"), toArray(viewport.area)},
        {QStringLiteral("tile"), viewport.tile},
        {QStringLiteral("wall"), viewport.wall},
        {QStringLiteral("plane"), toObject(viewport.plane)},
        {QStringLiteral("eye"), viewport.eye},
        {QStringLiteral("eyeSeparation"), viewport.eyeSeparation},
        {QStringLiteral("rightEyeOffset"),
         QJsonArray{viewport.rightEyeOffset.x(), viewport.rightEyeOffset.y()}},
        {QStringLiteral("flipX"), viewport.flipX},
        {QStringLiteral("flipY"), viewport.flipY},
        {QStringLiteral("edges"),
         QJsonArray{viewport.edges.left, viewport.edges.right, viewport.edges.top, viewport.edges.bottom}},
        {QStringLiteral("cell"), QJsonArray{viewport.row, viewport.column, viewport.rows, viewport.columns}},
        {QStringLiteral("neighbours"), QJsonArray{near.left, near.right, near.above, near.below}},
        {QStringLiteral("place"), toArray(viewport.place)}};
}

QJsonObject toObject(const zoWallWindow& window)
{
    QJsonArray viewports;
    for (const zoWallViewport& viewport : window.viewports)
        viewports.append(toObject(viewport));
    return {{QStringLiteral("number"), window.number},
            {QStringLiteral("title"), window.title},
            {QStringLiteral("screen"), window.screen},
            {QStringLiteral("fullScreen"), window.fullScreen},
            {QStringLiteral("geometry"), toArray(QRectF(window.geometry))},
            {QStringLiteral("hardwareSync"), window.hardwareSync},
            {QStringLiteral("place"), toArray(window.place)},
            {QStringLiteral("viewports"), viewports}};
}

QJsonObject toObject(const zoWallNode& node)
{
    QJsonArray windows;
    for (const zoWallWindow& window : node.windows)
        windows.append(toObject(window));
    return {{QStringLiteral("id"), node.id},
            {QStringLiteral("name"), node.name},
            {QStringLiteral("host"), node.host},
            {QStringLiteral("network"), node.network},
            {QStringLiteral("windows"), windows}};
}

QJsonObject toObject(const QMap<QString, QString>& options)
{
    QJsonObject result;
    for (auto option = options.begin(); option != options.end(); ++option)
        result.insert(option.key(), option.value());
    return result;
}

QJsonObject toObject(const zoWallNetwork& network)
{
    return {{QStringLiteral("id"), network.id},
            {QStringLiteral("description"), network.description},
            {QStringLiteral("parent"), network.parent},
            {QStringLiteral("gateway"), network.gateway},
            {QStringLiteral("encrypted"), network.encrypted},
            {QStringLiteral("options"), toObject(network.options)},
            {QStringLiteral("nodes"), QJsonArray::fromStringList(network.nodes)}};
}

// Takes the values of one object; the first one that is wrong is told.
class Reader final
{
public:
    explicit Reader(QString& reason) : m_reason(reason) {}

    bool isGood() const { return m_isGood; }

    template <class T>
    void readAll(const QJsonObject& object, const char* key, std::vector<T>& values)
    {
        const QJsonArray array = arrayOf(object, key, -1);
        values.reserve(std::size_t(array.size()));
        for (const QJsonValue& value : array) {
            values.emplace_back();
            if (!value.isObject())
                return fail(key);
            read(value.toObject(), values.back());
        }
    }

    void read(const QJsonObject& object, zoWallPlane& plane)
    {
        text(object, "name", plane.name);
        point(object, "lowerLeft", plane.lowerLeft);
        point(object, "lowerRight", plane.lowerRight);
        point(object, "upperRight", plane.upperRight);
    }

    void read(const QJsonObject& object, zoWallViewport& viewport)
    {
        number(object.value(QLatin1String("number")), "number", MostTiles, viewport.number);
        rect(object, "area", FurthestPixel, viewport.area);
        text(object, "tile", viewport.tile);
        text(object, "wall", viewport.wall);
        read(object.value(QLatin1String("plane")).toObject(), viewport.plane);
        text(object, "eye", viewport.eye);
        number(object.value(QLatin1String("eyeSeparation")), "eyeSeparation", FurthestPoint,
               viewport.eyeSeparation);
        numbers(object, "rightEyeOffset", FurthestPixel,
                {&viewport.rightEyeOffset.rx(), &viewport.rightEyeOffset.ry()});
        yesNo(object, "flipX", viewport.flipX);
        yesNo(object, "flipY", viewport.flipY);
        zoWallEdges& edges = viewport.edges;
        numbers(object, "edges", FurthestPixel, {&edges.left, &edges.right, &edges.top, &edges.bottom});
        numbers(object, "cell", MostTiles,
                {&viewport.row, &viewport.column, &viewport.rows, &viewport.columns});
        rect(object, "place", FurthestPlace, viewport.place);
        const QJsonArray near = arrayOf(object, "neighbours", 4);
        if (near.size() == 4)
            viewport.neighbours = {near[0].toString(), near[1].toString(), near[2].toString(),
                                   near[3].toString()};
    }

    void read(const QJsonObject& object, zoWallWindow& window)
    {
        number(object.value(QLatin1String("number")), "number", MostTiles, window.number);
        text(object, "title", window.title);
        number(object.value(QLatin1String("screen")), "screen", MostTiles, window.screen);
        yesNo(object, "fullScreen", window.fullScreen);
        QRectF geometry;
        rect(object, "geometry", 2 * FurthestPixel, geometry); // from one side to the other
        window.geometry = geometry.toRect();
        yesNo(object, "hardwareSync", window.hardwareSync);
        rect(object, "place", FurthestPlace, window.place);
        readAll(object, "viewports", window.viewports);
    }

    void read(const QJsonObject& object, zoWallNode& node)
    {
        text(object, "id", node.id);
        text(object, "name", node.name);
        text(object, "host", node.host);
        number(object.value(QLatin1String("network")), "network", FurthestPixel, node.network);
        readAll(object, "windows", node.windows);
    }

    void read(const QJsonObject& object, zoWallNetwork& network)
    {
        text(object, "id", network.id);
        text(object, "description", network.description);
        number(object.value(QLatin1String("parent")), "parent", FurthestPixel, network.parent);
        text(object, "gateway", network.gateway);
        yesNo(object, "encrypted", network.encrypted);
        options(object, network.options);
        texts(object, "nodes", network.nodes);
    }

    void text(const QJsonObject& object, const char* key, QString& value)
    {
        const QJsonValue found = object.value(QLatin1String(key));
        if (found.isString())
            value = found.toString();
        else if (!found.isUndefined())
            fail(key);
    }

    void texts(const QJsonObject& object, const char* key, QStringList& values)
    {
        const QJsonArray array = arrayOf(object, key, -1);
        for (const QJsonValue& value : array) {
            if (!value.isString())
                return fail(key);
            values.append(value.toString());
        }
    }

    static void options(const QJsonObject& object, QMap<QString, QString>& values)
    {
        const QJsonObject found = object.value(QLatin1String("options")).toObject();
        for (auto option = found.begin(); option != found.end(); ++option)
            values.insert(option.key(), option.value().toString());
    }

    void point(const QJsonObject& object, const char* key, zoWallPoint& value)
    {
        numbers(object, key, FurthestPoint, {&value.x, &value.y, &value.z});
    }

    template <class T>
    void number(const QJsonValue& value, const char* key, double limit, T& target)
    {
        if (value.isUndefined())
            return;
        const double found = value.toDouble(std::nan(""));
        if (!(std::abs(found) <= limit))
            return fail(key);
        target = static_cast<T>(found);
    }

    template <class T>
    void numbers(const QJsonObject& object, const char* key, double limit, std::initializer_list<T*> targets)
    {
        const QJsonArray array = arrayOf(object, key, int(targets.size()));
        int index = 0;
        if (array.isEmpty())
            return;
        for (T* const target : targets)
            number(array[index++], key, limit, *target);
    }

private:
    void fail(const char* key)
    {
        if (m_isGood)
            m_reason = QStringLiteral("\"%1\" has no proper value").arg(QLatin1String(key));
        m_isGood = false;
    }

    void yesNo(const QJsonObject& object, const char* key, bool& value)
    {
        const QJsonValue found = object.value(QLatin1String(key));
        if (found.isBool())
            value = found.toBool();
        else if (!found.isUndefined())
            fail(key);
    }

    void rect(const QJsonObject& object, const char* key, double limit, QRectF& value)
    {
        double x = value.x();
        double y = value.y();
        double width = value.width();
        double height = value.height();
        numbers(object, key, limit, {&x, &y, &width, &height});
        value = QRectF(x, y, width, height);
    }

    // Empty when there is none, or none of that size; -1 takes any.
    QJsonArray arrayOf(const QJsonObject& object, const char* key, int size)
    {
        const QJsonValue found = object.value(QLatin1String(key));
        if (found.isUndefined())
            return {};
        const QJsonArray array = found.toArray();
        if (found.isArray() && (size < 0 || array.size() == size))
            return array;
        fail(key);
        return {};
    }

    QString& m_reason;
    bool m_isGood = true;
};
} // namespace

const zoWallNode* zoWallSetup::node(const QString& id) const
{
    for (const zoWallNode& candidate : nodes) {
        if (candidate.id == id)
            return &candidate;
    }
    return nullptr;
}

zoWallSetup zoWallSetup::ofNodes(const QStringList& ids) const
{
    zoWallSetup result;
    result.networks = networks;
    result.options = options;
    result.walls = walls;
    result.size = size;
    result.head = head;
    result.gamma = gamma;
    result.notes = notes;
    for (const QString& id : ids) {
        if (const zoWallNode* const found = node(id))
            result.nodes.push_back(*found);
    }
    return result;
}

QJsonObject zoWallSetup::toJson() const
{
    QJsonArray nodeValues;
    for (const zoWallNode& value : nodes)
        nodeValues.append(toObject(value));
    QJsonArray networkValues;
    for (const zoWallNetwork& value : networks)
        networkValues.append(toObject(value));
    QJsonArray wallValues;
    for (const zoWallPlane& value : walls)
        wallValues.append(toObject(value));
    return {{QStringLiteral("nodes"), nodeValues},
            {QStringLiteral("networks"), networkValues},
            {QStringLiteral("options"), toObject(options)},
            {QStringLiteral("walls"), wallValues},
            {QStringLiteral("size"), QJsonArray{size.width(), size.height()}},
            {QStringLiteral("head"), toArray(head)},
            {QStringLiteral("gamma"), gamma},
            {QStringLiteral("notes"), QJsonArray::fromStringList(notes)}};
}

bool zoWallSetup::fromJson(const QJsonObject& object, QString& reason)
{
    zoWallSetup result;
    Reader reader(reason);
    reader.readAll(object, "nodes", result.nodes);
    reader.readAll(object, "networks", result.networks);
    reader.options(object, result.options);
    reader.readAll(object, "walls", result.walls);
    reader.numbers(object, "size", LargestWall, {&result.size.rwidth(), &result.size.rheight()});
    reader.point(object, "head", result.head);
    reader.number(object.value(QLatin1String("gamma")), "gamma", 10.0, result.gamma);
    reader.texts(object, "notes", result.notes);
    if (!reader.isGood())
        return false;
    *this = std::move(result);
    return true;
}
