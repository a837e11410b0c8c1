#pragma once

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

// Turns a legacy key/value configuration into the text of a configuration document; lives for one conversion.
class zoHPCConfigConverter final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    // Something that a reader of the old file should look at after the conversion.
    struct Remark
    {
        enum class Kind {
            NoParameters,       // the text holds no parameter at all
            UnreadNumber,       // a number that is none was read as 0
            UnknownCompression, // a compression level without counterpart was dropped
            NumberedHosts,      // equal host names: all windows got numbered names
            DroppedForwards,    // hosts after a second list of forwarded hosts were dropped
            ShiftedHosts,       // forwarding hosts move the hosts and positions of later windows
            DroppedPipes,       // pipes after a gap in their numbers were dropped
            CopiedOverlap,      // the horizontal overlap became the vertical one, too
            HalfStereo,         // a stereo wall whose viewports cover the left half only
            MissingHosts,       // windows without a host
            UnusedHosts,        // hosts without a window
            EmptyWindow,        // viewports in a window without an area have no rectangle
            CutWall             // windows of a senselessly large wall were dropped
        };

        Kind kind;
        QString text;      // one sentence for a person
        QString parameter; // the legacy parameter that it is about; empty for none in particular
        // Where that parameter stands in the legacy text, from 1; the beginning when it does not.
        int line = 1;
        int column = 1;

        bool operator==(const Remark& other) const
        {
            return kind == other.kind && text == other.text && parameter == other.parameter &&
                   line == other.line && column == other.column;
        }
        // Stable word for the kind, the same in all languages, such as "unread-number".
        static QString kindName(Kind kind);
    };

    // A wall gets no more windows than this unless its list of hosts is longer: a damaged file with a million
    // rows must not fill the memory.
    static constexpr int MaximumWindowsWithoutHost = 16384;

    // Parameters inside more than this many others are ignored, as each one's value holds those inside it.
    static constexpr int MaximumNestedParameters = 100;

    zoHPCConfigConverter();
    ~zoHPCConfigConverter();

    // The configuration document, as zoHPCDocumentText writes it, for the whole text of a legacy file. Never
    // fails: what cannot be read is read with defaults, so that there is always a document with its empty
    // sections. Takes time and memory in proportion to the text.
    QString convert(const QString& legacyText);

    // Parameters found by the last conversion; 0 means that the text was no legacy configuration.
    int parameterCount() const { return int(m_parameters.size()); }

    // Values that the last conversion dropped or changed by rule, in the order in which it met them.
    // Reads the legacy text again to find the places.
    QList<Remark> remarks() const;

private:
    // Layouts of a legacy file; the numbers are the format's own.
    enum Mode { Raytracing = 0, Powerwall = 1, Custom = 2, Old = 3 };

    void parseConfig(const QString& legacyText);
    void parseMode();
    QStringList parsePipes();
    void parseOptions();
    void parseHosts();
    void addHosts(QDomElement& parent, const QString& hosts);
    void addHost(QDomElement& parent, const QString& name, int xPosition, int yPosition);
    QDomElement addNode(QDomElement& parent, const QString& name);
    QString parsePipeHost(const QString& pipe);
    void numberEqualHosts();

    void parsePowerwall();
    void parseCustom();
    void parseOld();

    void addWall(const QString& name, int tileWidth, int tileHeight, int offsetX, int offsetY, int rows,
                 int columns, int overlapX, int overlapY);
    void addPlane(const QString& name, const std::array<std::array<double, 3>, 3>& points);
    QDomElement addWindow(const QString& node, const QString& screen, int x, int y, int width, int height);
    void addViewport(QDomElement window, const QString& projection, double x1, double y1, double x2,
                     double y2, const QString& eye, int rotate);

    QString parameter(const char* key, const char* defaultValue) const;
    int intParameter(const char* key, const char* defaultValue);
    int toInt(const QString& text);
    double toDouble(const QString& text);
    static int position(const std::vector<int>& positions, int index);
    QStringList droppedPipes(int firstNumber) const;
    QString entryParameter(int entry) const;
    void countUnreadField();
    void remark(Remark::Kind kind, const QString& text, const QString& aboutParameter);
    void remarkNumber(const char* key, const QString& text);
    void remarkWindows(int windows);

    QMap<QString, QString> m_parameters;
    Mode m_mode = Custom;
    QDomDocument m_document;
    QDomElement m_clusterElement;
    QDomElement m_masterElement;
    QDomElement m_networkElement;
    QDomElement m_displayElement;
    QStringList m_hostNames;
    std::vector<int> m_hostXPositions; // of plain hosts only
    std::vector<int> m_hostYPositions; // of plain hosts only
    bool m_edgeBlending = false;
    double m_zeroParallax = 0.0;
    QString m_legacyText;
    QList<Remark> m_remarks;        // without their places
    int m_entry = 0;                // that is being read: the number of the pipe in the custom layout
    std::vector<int> m_hostEntries; // of the names of hosts
    QString m_forwardsParameter;    // with the first forwarding host
    int m_unreadFields = 0;         // fields of the layout that are no numbers
    QString m_unreadParameter;      // with the first of them
};
