#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QComboBox;
class QTreeWidget;
class Ui_zoHPCTreeEditGUIW;
class zoHPCTreeItem;

// Property editor of one item of the host tree: the options of the cluster, of a network or of a node. What
// is changed here is in the item at once.
class zoHPCTreeEditGUIW final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCTreeEditGUIW(QWidget* parent = nullptr);
    ~zoHPCTreeEditGUIW() override;

    // Selects the row with this data; false, and row 0, when there is none.
    static bool setComboboxByData(QComboBox* combo, const QString& data);
    static QString getDataFromCombobox(const QComboBox* combo);

    // While the cluster runs the settings of networks can only be read.
    void setIsRunning(bool running);

public slots:
    // Edits this item, which is not owned: it must live until the next call or until its tree widget is
    // destroyed. Null is ignored. Option values that the editor cannot show are replaced by the defaults.
    // Nothing is announced except such a replacement.
    void setItem(zoHPCTreeItem* item);

    void setNetworkType(int index);
    void ethernetSpeedChanged(int index);
    void setSceneCompression(int index);
    void setImageCompression(int index);
    void setStartStopAction(int index);
    void setParallelFrames(int index);
    void setQueueLength(int index);
    void setStillSupersampling(int index);
    void servicePortChanged(int port);
    void setEncrypted(bool encrypted);
    void setHomogeneous(bool homogeneous);

signals:
    void imageCompressionChanged(const QString& value);
    void sceneCompressionChanged(const QString& value);
    void startStopActionsChanged(bool downscale, bool raytracing, bool rendering);
    void parallelFramesChanged(int count);
    void frameQueueLengthChanged(int length);
    void stillFrameSupersamplingChanged(int level);
    void hostChanged();

private:
    std::unique_ptr<Ui_zoHPCTreeEditGUIW> m_ui;
    zoHPCTreeItem* m_item = nullptr; // not owned
};
