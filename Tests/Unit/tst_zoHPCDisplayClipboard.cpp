#include "zoTestCase.h"

#include <zoHPCDisplayClipboard.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>

#include <QCoreApplication>

#include <memory>

// What was copied in the display setup.
class tst_zoHPCDisplayClipboard final : public zoTestCase
{
    Q_OBJECT

private slots:
    void newClipboardIsEmpty();
    void copyOutlivesItsSource();
    void copiedSourceGetsANewIdentifier();
    void eachPasteIsAnItemOfItsOwn();
    void copyHasAllBelow();
};

void tst_zoHPCDisplayClipboard::newClipboardIsEmpty()
{
    const zoHPCDisplayClipboard clipboard;

    QVERIFY(!clipboard.hasProjection());
    QVERIFY(!clipboard.hasOutput());
    QVERIFY(!clipboard.newProjection(QStringLiteral("p")));
    QVERIFY(!clipboard.newOutput());
}

void tst_zoHPCDisplayClipboard::copyOutlivesItsSource()
{
    zoHPCDisplayClipboard clipboard;
    {
        zoHPCProjectionItem source(QStringLiteral("cave"), zoHPCProjectionType::Kind::Cave);
        source.setDouble(zoHPCProjectionItem::CaveWidth, 2500.0);
        clipboard.copyProjection(source);
    }

    const std::unique_ptr<zoHPCProjectionItem> pasted = clipboard.newProjection(QStringLiteral("other"));

    QVERIFY(pasted->kind() == zoHPCProjectionType::Kind::Cave);
    QCOMPARE(pasted->getString(zoHPCProjectionItem::Name), QStringLiteral("other"));
    QCOMPARE(pasted->getDouble(zoHPCProjectionItem::CaveWidth), 2500.0);
}

void tst_zoHPCDisplayClipboard::copiedSourceGetsANewIdentifier()
{
    zoHPCDisplayClipboard clipboard;
    zoHPCProjectionItem source(QStringLiteral("p"), zoHPCProjectionType::Kind::Plane);
    const QString before = source.getString(zoHPCProjectionItem::Identifier);

    clipboard.copyProjection(source);

    QVERIFY(source.getString(zoHPCProjectionItem::Identifier) != before);
}

void tst_zoHPCDisplayClipboard::eachPasteIsAnItemOfItsOwn()
{
    zoHPCDisplayClipboard clipboard;
    zoHPCProjectionItem source(QStringLiteral("p"), zoHPCProjectionType::Kind::Wall);
    clipboard.copyProjection(source);

    const auto first = clipboard.newProjection(QStringLiteral("a"));
    const auto second = clipboard.newProjection(QStringLiteral("b"));

    QVERIFY(first->getString(zoHPCProjectionItem::Identifier) !=
            second->getString(zoHPCProjectionItem::Identifier));
    QCOMPARE(second->child(0)->data(0, Qt::EditRole).toString(), QStringLiteral("b row:1 col:1"));
}

void tst_zoHPCDisplayClipboard::copyHasAllBelow()
{
    zoHPCDisplayClipboard clipboard;
    zoHPCWindowItem window;
    window.setRenderNode(QStringLiteral("n1"));
    window.addChild(new zoHPCViewportItem);

    clipboard.copyOutput(window);
    const std::unique_ptr<zoHPCDisplayItem> pasted = clipboard.newOutput();

    QVERIFY(dynamic_cast<zoHPCWindowItem*>(pasted.get()) != nullptr);
    QCOMPARE(pasted->getString(zoHPCWindowItem::Node), QStringLiteral("n1"));
    QCOMPARE(pasted->childCount(), 1);
    QVERIFY(clipboard.output() != pasted.get());
}

QTEST_GUILESS_MAIN(tst_zoHPCDisplayClipboard)
#include "tst_zoHPCDisplayClipboard.moc"
