#include "gui/materials/TemplatesWindow.h"

#include "core/materials/Templates.h"
#include "gui/materials/MaterialPage.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

class TemplatesWindowTest : public QObject {
    Q_OBJECT

private slots:
    void creatorSavesAndTheMaterialPageSelectsTheGroup();
};

void TemplatesWindowTest::creatorSavesAndTheMaterialPageSelectsTheGroup() {
    TestHome home;
    Settings settings;
    QtScript ui;
    Session session(settings, ui);
    session.Figures = {Figure{"Figure 1", std::vector<Material>(3)}};
    for (size_t i = 0; i < 3; ++i)
        session.Figures[0].Materials[i].Name = std::vector{"SkinBody", "SkinHead", "EyeBall"}[i];
    session.cmbFigures = {"Figure 1"};
    ConnectTemplates(session);
    ThumbnailCache thumbnails;
    MaterialPage page(session, thumbnails);

    {
        TemplatesWindow window(session);
        QCOMPARE(window.windowTitle(), QString("Selection template creator"));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        ui.nextInput("Skin");
        QTest::mouseClick(window.findChild<QPushButton *>("cmdCreate"), Qt::LeftButton);
        auto *materials = window.findChild<QListWidget *>("lstMaterials");
        QCOMPARE(materials->count(), 3);
        const QPoint second = materials->visualItemRect(materials->item(1)).center();
        QTest::mouseClick(materials->viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(materials->viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(window.findChild<QListWidget *>("lstMatInGroup")->count(), 1);
        QVERIFY(window.findChild<QPushButton *>("cmdDeleteMaterials")->isEnabled());
        QVERIFY(window.width() <= 1024 && window.height() <= 768);
        ui.nextInput("Figure");
        window.findChild<QAction *>("mnuSaveAs")->trigger();
        QCOMPARE(window.findChild<QStatusBar *>("StatusBar1")->currentMessage(),
                 QString("Current template: Figure.cfg"));
        SaveScreenshot(&window, "template-creator");
        window.findChild<QAction *>("mnuExit")->trigger();
    }
    // Closing the creator refreshed the main window's list.
    QCOMPARE(session.View.Combo1, std::vector<std::string>{"Figure"});

    page.show();
    page.refresh();
    auto *combo1 = page.findChild<QComboBox *>("Combo1");
    auto *combo2 = page.findChild<QComboBox *>("Combo2");
    QVERIFY(!combo2->isEnabled());
    session.View.lstMaterials = {"SkinBody", "SkinHead", "EyeBall"};
    session.View.MaterialControlsEnabled = true;
    page.refresh();
    combo1->setFocus();
    QTest::keyClick(combo1, Qt::Key_Down);
    QVERIFY(combo2->isEnabled());
    QVERIFY(page.findChild<QPushButton *>("cmdEditTemplate")->isEnabled());
    combo2->setFocus();
    QTest::keyClick(combo2, Qt::Key_Down);
    const auto *list = page.lstMaterials();
    QVERIFY(!list->item(0)->isSelected() && list->item(1)->isSelected() && !list->item(2)->isSelected());
}

QTEST_MAIN(TemplatesWindowTest)
#include "TemplatesWindowTest.moc"
