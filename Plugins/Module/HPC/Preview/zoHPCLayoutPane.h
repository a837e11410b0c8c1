#pragma once

#include "zoHPCDebounce.h"
#include "zoHPCPicture.h"

#include <QWidget>

#include <array>
#include <memory>

class QComboBox;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCPictureView;
class zoHPCProblemsView;
class zoHPCReview;
class zoHPCRoomView;
class zoHPCScreensView;
class zoHPCTreeGUIW;

// The layout preview: room and screens on tabs, the problems below. It follows the trees by itself, once per
// turn of the event loop however much changes, and only while it is shown; items that leave a tree are
// forgotten at once.
class zoHPCLayoutPane final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCLayoutPane(QWidget* parent = nullptr);
    ~zoHPCLayoutPane() override;

    zoHPCRoomView* roomView() const { return m_room; }          // for tests
    zoHPCScreensView* screensView() const { return m_screens; } // for tests
    zoHPCProblemsView* problemsView() const { return m_problems; }
    // What the pane shows, for others who show the same configuration: it is read and checked once for all.
    zoHPCReview& review() const { return *m_review; }
    // Of the last refresh.
    int problemCount() const; // for tests
    // Whether all of it shows the trees as they are now. While they change quickly, large setups are followed
    // by the current picture only, in less detail.
    bool isSettled() const;

    // Trees of the display setup and the host tree. Not owned, each may be null and may go before the pane.
    void setModel(QTreeWidget* projections, QTreeWidget* displays, zoHPCTreeGUIW* hosts);
    // Rows of one of the trees, highlighted in both pictures; announces nothing.
    void setCurrentItems(const zoHPCPicture::Rows& items);

    // Whether a click on a surface of the room chooses it, rather than its row; with the control key it never does.
    void setTakesSurfaces(bool takes);

public slots:
    // Reads the trees now.
    void refresh();
    // Asks for a file and writes the picture of the current tab to it: SVG, PNG or PDF by its suffix.
    void savePicture();

signals:
    // A person chose a row of one of the trees.
    void itemActivated(QTreeWidgetItem* item);
    // A person chose a surface for what is edited: a row of the projections.
    void surfaceChosen(QTreeWidgetItem* item);
    // A drag or a fix changed values of the display setup.
    void displayEdited();
    // Around a fix that changes values of the host tree.
    void hostsAboutToBeEdited();
    void hostsEdited();
    void problemCountChanged(int count);
    // All was read after changes that came quickly.
    void settled();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* createScreensPage();
    QLayout* createTools();
    QWidget* createRoomPage();
    void connectViews();

    void forgetItems();
    void catchUpLater();
    void catchUp();
    void settle();
    void showAll();
    std::array<zoHPCPictureView*, 2> views() const;
    zoHPCPictureView* shownView() const;
    std::shared_ptr<const zoHPCLayout> readLayout();
    void showLayout(const std::shared_ptr<const zoHPCLayout>& layout);

    zoHPCReview* m_review = nullptr;
    QTabWidget* m_tabs = nullptr;
    zoHPCRoomView* m_room = nullptr;
    zoHPCScreensView* m_screens = nullptr;
    zoHPCProblemsView* m_problems = nullptr;
    QComboBox* m_screenSize = nullptr;
    zoHPCDebounce m_debounce{this}; // of the trees
    int m_count = 0;
    bool m_takesSurfaces = false;
    bool m_isLarge = false;   // the last layout
    bool m_isPartial = false; // only the current picture is up to date
    bool m_isStale = true;
    bool m_isScheduled = false;
};
