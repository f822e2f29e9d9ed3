#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

// What every control is made of, in a window of its own.
class TestClickable : public TestCase
{
    Q_OBJECT

    // One of 80 x 40 px at 100, 100 with these properties, and what lies in it.
    struct Place
    {
        explicit Place(const QByteArray &properties = {})
        {
            QQmlComponent component(&engine);
            component.setData("import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                              "import \"qrc:/qml\"\nimport \"qrc:/qml/common\"\n"
                              "Window {\n"
                              "    property int clicks: 0\n"
                              "    property int passedOn: 0\n"
                              "    width: 400; height: 300; visible: true\n"
                              "    Utils { id: utils }\n"
                              "    Item {\n"
                              "        anchors.fill: parent\n"
                              "        Keys.onPressed: ++passedOn\n"
                              "        Clickable {\n"
                              "            objectName: \"control\"\n"
                              "            x: 100; y: 100; width: 80; height: 40\n"
                              "            text: \"Go\"\n"
                              "            onClicked: ++clicks\n"
                              "            " +
                                  properties +
                                  "\n"
                                  "            Rectangle {\n"
                                  "                objectName: \"skin\"\n"
                                  "                anchors.fill: parent\n"
                                  "            }\n"
                                  "        }\n"
                                  "    }\n"
                                  "}\n",
                              QUrl());
            window.reset(qobject_cast<QQuickWindow *>(component.create()));
            if (!window) {
                qWarning("%s", qPrintable(component.errorString()));
                return;
            }
            control = window->findChild<QQuickItem *>("control");
            window->requestActivate();
            QTRY_VERIFY(window->isActive());
        }
        int clicks() const { return window->property("clicks").toInt(); }
        int passedOn() const { return window->property("passedOn").toInt(); }
        bool says(const char *property) const { return control->property(property).toBool(); }
        void focus() const { control->forceActiveFocus(Qt::TabFocusReason); }
        void click(const QPoint &at) const
        {
            QTest::mouseClick(window.get(), Qt::LeftButton, {}, at);
        }
        bool hasRing() const { return ring()->isVisible(); }
        QQuickItem *ring() const { return control->findChild<QQuickItem *>("focusRing"); }
        // Which pointer the window shows there.
        static const QQuickItem *pointerOf(const QQuickItem *item)
        {
            const QList<QQuickItem *> parts = item->childItems();
            for (const QQuickItem *part : parts) {
                if (part->isVisible() && part->cursor().shape() == Qt::PointingHandCursor)
                    return part;
            }
            return nullptr;
        }

        QQmlEngine engine;
        std::unique_ptr<QQuickWindow> window;
        QQuickItem *control = nullptr;
    };

private slots:
    void initTestCase() { registerInterface(); }

    void mousePressesIt()
    {
        const Place place;
        place.click({140, 120});
        QCOMPARE(place.clicks(), 1);
        place.click({99, 120});
        place.click({140, 141});
        QCOMPARE(place.clicks(), 1);
    }

    void mouseThatIsLetGoElsewhereDoesNot()
    {
        const Place place;
        QTest::mousePress(place.window.get(), Qt::LeftButton, {}, {140, 120});
        QVERIFY(place.says("held"));
        QTest::mouseRelease(place.window.get(), Qt::LeftButton, {}, {10, 10});
        QVERIFY(!place.says("held"));
        QCOMPARE(place.clicks(), 0);
    }

    void reachesFurtherThanItIsSeen()
    {
        const Place place("reach: 8");
        place.click({93, 93});
        place.click({187, 147});
        QCOMPARE(place.clicks(), 2);
        place.click({91, 120});
        QCOMPARE(place.clicks(), 2);
    }

    void mouseIsSeenOnIt()
    {
        const Place place;
        QTest::mouseMove(place.window.get(), {10, 10});
        QVERIFY(!place.says("hovered"));
        QTest::mouseMove(place.window.get(), {140, 120});
        QTRY_VERIFY(place.says("hovered"));
        QVERIFY(Place::pointerOf(place.control));
        QTest::mouseMove(place.window.get(), {10, 10});
        QTRY_VERIFY(!place.says("hovered"));
    }

    void mayLeaveTheMouseToOthers()
    {
        const Place place("takesMouse: false");
        place.click({140, 120});
        QCOMPARE(place.clicks(), 0);
        QVERIFY(!Place::pointerOf(place.control));
        place.focus();
        QTest::keyClick(place.window.get(), Qt::Key_Space);
        QCOMPARE(place.clicks(), 1);
    }

    void keysPressIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
        QTest::newRow("Space") << int(Qt::Key_Space);
    }
    void keysPressIt()
    {
        QFETCH(int, key);
        const Place place;
        place.focus();
        QTest::keyClick(place.window.get(), Qt::Key(key));
        QCOMPARE(place.clicks(), 1);
        QCOMPARE(place.passedOn(), 0);
    }

    void otherKeysArePassedOn()
    {
        const Place place;
        place.focus();
        QTest::keyClick(place.window.get(), Qt::Key_Escape);
        QTest::keyClick(place.window.get(), Qt::Key_A);
        QCOMPARE(place.clicks(), 0);
        QCOMPARE(place.passedOn(), 2);
    }

    void enterMayBePassedOn_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
    }
    void enterMayBePassedOn()
    {
        QFETCH(int, key);
        const Place place("enterPresses: false");
        place.focus();
        QTest::keyClick(place.window.get(), Qt::Key(key));
        QCOMPARE(place.clicks(), 0);
        QCOMPARE(place.passedOn(), 1);
        QTest::keyClick(place.window.get(), Qt::Key_Space);
        QCOMPARE(place.clicks(), 1);
    }

    void readersOfTheScreenPressIt()
    {
        const Place place;
        QAccessibleInterface *const told = QAccessible::queryAccessibleInterface(place.control);
        QVERIFY(told && told->actionInterface());
        told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(place.clicks(), 1);
    }

    void nothingPressesADisabledOne()
    {
        const Place place("enabled: false");
        place.click({140, 120});
        place.focus();
        QTest::keyClick(place.window.get(), Qt::Key_Space);
        QAccessibleInterface *const told = QAccessible::queryAccessibleInterface(place.control);
        told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(place.clicks(), 0);
    }

    void tellsWhatItIs()
    {
        const Place plain;
        const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(plain.control);
        QCOMPARE(told->role(), QAccessible::Button);
        QCOMPARE(told->text(QAccessible::Name), QStringLiteral("Go"));
        QVERIFY(told->state().focusable);

        const Place link("Accessible.role: Accessible.Link; Accessible.name: \"there\"");
        told = QAccessible::queryAccessibleInterface(link.control);
        QCOMPARE(told->role(), QAccessible::Link);
        QCOMPARE(told->text(QAccessible::Name), QStringLiteral("there"));
    }

    void isAStopOfTheKeyboardUnlessToldOtherwise()
    {
        const Place place;
        QTest::keyClick(place.window.get(), Qt::Key_Tab);
        QVERIFY(place.control->hasActiveFocus());
        const Place other("activeFocusOnTab: false");
        QTest::keyClick(other.window.get(), Qt::Key_Tab);
        QVERIFY(!other.control->hasActiveFocus());
        // Something else gives it the keyboard then.
        QVERIFY(QAccessible::queryAccessibleInterface(other.control)->state().focusable);
    }

    void ringShowsWhereTheKeyboardIs()
    {
        const Place place("radius: 10");
        QVERIFY(!place.hasRing());
        place.click({140, 120});
        QVERIFY(!place.hasRing());
        place.focus();
        QVERIFY(place.hasRing());
        const QQuickItem *skin = place.control->findChild<QQuickItem *>("skin");
        QVERIFY(place.ring()->z() > skin->z());
        QCOMPARE(place.ring()->property("radius").toReal(), 13.0);
        QCOMPARE(place.ring()->size(), QSizeF(86, 46));
    }

    void ringMayFollowSomethingElse()
    {
        const Place place("ringed: text === \"Here\"");
        place.focus();
        QVERIFY(!place.hasRing());
        place.control->setProperty("text", "Here");
        QVERIFY(place.hasRing());
    }

    void drawsNothingItself()
    {
        const Place place;
        QCOMPARE(place.control->property("color").value<QColor>(), QColor(Qt::transparent));
    }
};

KOLM_GUI_TEST_MAIN(TestClickable)
#include "tst_clickable.moc"
