#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
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

    // Selects the row with exactly this data, else row 0.
    static void setComboboxByData(QComboBox* combo, const QString& data);
    static QString getDataFromCombobox(const QComboBox* combo);

    // While the cluster runs the settings of networks can only be read.
    void setIsRunning(bool running);

    // Called before an option of the item that is shown gets its default; the value has no row.
    using ReplacementListener =
        std::function<void(zoHPCTreeItem* item, const QString& option, const QString& value)>;
    void setReplacementListener(ReplacementListener listener) { m_replacementListener = std::move(listener); }

    // Called before a person's first key in the name of the node shown; again after the field was left.
    using RenameListener = std::function<void(zoHPCTreeItem* node)>;
    void setRenameListener(RenameListener listener) { m_renameListener = std::move(listener); }

    // While the widgets take the values of an item. What is announced then need not be a change.
    bool isShowingItem() const { return m_isFilling; }
    // Lets a person type the name of the item shown; nothing for an item without one.
    void editName();

public slots:
    // Edits this item, which is not owned; one that dies is forgotten. Null is ignored. An option that no row
    // of its combo box shows is replaced by the default, which the log tells; everything else stays as it is
    // until somebody changes it. A widget that comes to show another value than before announces it as if a person had chosen
    // it: so listeners hear what a loaded document holds.
    void setItem(zoHPCTreeItem* item);
    // What is changed here from now on, but names, is changed in all of these that are of the same kind as the item
    // shown, if that is one of them. They are not owned; setItem() ends it.
    void setSelection(const std::vector<zoHPCTreeItem*>& items);

    // A person changed a widget. Without an item these do nothing.
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
    // Something that a document holds was changed here.
    void changed();

private:
    // Null before the first one, and when the one that was shown last is destroyed.
    zoHPCTreeItem* item() const { return m_watchedItem.lock().get(); }
    template <class Change>
    bool changeOthers(Change change);
    void connectBox(QCheckBox* box, const std::function<void(bool on)>& change);
    void showMixed(QCheckBox* box, bool (zoHPCTreeItem::*is)() const);
    void showSelection();
    void fillComboRows();
    void connectWidgets();
    void connectBoxes();
    void connectNames();
    void showMaster();
    void showNetwork();
    void showNode();
    void showOption(QComboBox* combo, const QString& option, void (zoHPCTreeEditGUIW::*slot)(int));
    // False when there is no item.
    bool write(const QString& option, const QString& value);
    bool writeRow(const QString& option, const QComboBox* combo, int index);

    std::unique_ptr<Ui_zoHPCTreeEditGUIW> m_ui;
    std::weak_ptr<zoHPCTreeItem> m_watchedItem;
    std::vector<std::weak_ptr<zoHPCTreeItem>> m_others; // that change with it
    ReplacementListener m_replacementListener;
    RenameListener m_renameListener;
    bool m_isNameTyped = false; // somebody types the name, and was announced
    bool m_isFilling = false;   // the widgets change because another item is shown
};
