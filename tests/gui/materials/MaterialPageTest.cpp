// What only widgets can show of the material page: double-clicks on the property labels,
// a file dropped on a path box, the colour dialog, and a whole edit through the main
// window, saved, compared with the expected pose and read back.
#include "gui/materials/MaterialPage.h"

#include "core/materials/MaterialPageState.h"
#include "core/platform/Paths.h"
#include "gui/QtInteraction.h"
#include "gui/materials/CreateMatWindow.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

class MaterialPageTest : public QObject {
    Q_OBJECT

private slots:
    void colourDialog();
    void editSaveAndReopen();
    void demoAndCorpusCharacters();
};

// The system's colour dialog starts from the swatch; Cancel changes nothing.
void MaterialPageTest::colourDialog() {
    Settings settings;
    ThumbnailCache thumbnails;
    QtInteraction ui(thumbnails);
    Session session(settings, ui);
    session.Figures = {Figure{"figure"}};
    session.cmbFigures = {"figure"};
    session.View.EnableMaterialControls();
    MaterialPage page(session, thumbnails);
    cmbFigures_Click(session, 0);
    lblCloseX_DblClick(session, kKsColor); // a new material starts with every property disabled
    page.refresh();
    page.show();
    auto *swatch = page.findChild<Swatch *>("SHP_1");
    WhenModal<QColorDialog>([](QColorDialog *dialog) {
        dialog->setCurrentColor(QColor(10, 20, 30));
        dialog->accept();
    });
    QTest::mouseClick(swatch, Qt::LeftButton);
    WhenModal<QColorDialog>([](QColorDialog *dialog) {
        QCOMPARE(dialog->currentColor(), QColor(10, 20, 30));
        dialog->setCurrentColor(QColor(200, 0, 0));
        dialog->reject();
    });
    QTest::mouseClick(swatch, Qt::LeftButton);
    QCOMPARE(session.Figures[0].Materials[0].KsColor, (Rgb{10, 20, 30}));
    QCOMPARE(swatch->palette().color(QPalette::Window), QColor(10, 20, 30));
}

// Open a character, edit it with the widgets, save it in both formats, compare with the
// expected poses, and read the saved pose back.
void MaterialPageTest::editSaveAndReopen() {
    WindowOnHome m([](Settings &settings) {
        settings.AutoCorrect = false;
        settings.MainThumb = false;
        settings.SetP5Version = false;
    });
    auto &[home, settings, ui, session, thumbnails, window] = m;
    const auto find = [&](const char *name) { return Child<QWidget>(&window, name); };
    const auto click = [&](const char *name) { static_cast<QAbstractButton *>(find(name))->click(); };

    ui.nextFile(std::string(GELVANE_TEST_DATA) + "/figures/one-figure.cr2");
    ui.nextAnswer(MsgResult::Yes); // with its morphs and poses: the actors become object rows
    window.findChild<QAction *>("mnuOpenCR2")->trigger();
    auto *list = static_cast<QListWidget *>(find("lstMaterials"));
    QCOMPARE(list->count(), 2);

    // Both materials: Transparency Min typed and applied, Reflective Color switched off,
    // Reflection Strength (absent in the file) switched on with a value.
    click("cmd_0");
    auto *tMin = static_cast<QLineEdit *>(find("TXT_2"));
    tMin->selectAll();
    QTest::keyClicks(tMin, "25");
    click("cmd_15");
    QTest::mouseDClick(find("lblReflectiveColor"), Qt::LeftButton);
    QVERIFY(find("lblCloseReflectiveColor")->isVisible() && !find("SHP_3")->isVisible());
    QTest::mouseDClick(find("lblCloseReflectionStrength"), Qt::LeftButton);
    auto *strength = static_cast<QLineEdit *>(find("TXT_7"));
    strength->selectAll();
    QTest::keyClicks(strength, "45");
    click("cmd_24");

    // Eyes alone: a colour, a check box, a dropped bump map, No Map on the texture of Skin.
    list->setCurrentRow(1, QItemSelectionModel::ClearAndSelect);
    ui.nextColor(RgbColor{51, 102, 153});
    QTest::mouseClick(find("SHP_0"), Qt::LeftButton);
    click("chkMultiplyThroughKdColor");
    DropFiles(find("TXT_9"), {"/maps/eyes.bum", "/maps/other.bum"});             // the first one counts
    QCOMPARE(find("TXT_9")->palette().color(QPalette::Text), QColor(255, 0, 0)); // no such file
    list->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    click("cmd_2");

    // A new material, and a copy of Eyes named "Eye" on the head, which becomes an owner.
    ui.nextInput("Lashes");
    click("cmdNewMat");
    WhenModal<CreateMatWindow>([&](CreateMatWindow *dialog) {
        auto *destination = dialog->findChild<QComboBox *>("cmbFigures2");
        const int head = destination->findText("actor head:1");
        QVERIFY(head > 0);
        destination->setCurrentIndex(head);
        emit destination->activated(head);
        dialog->findChild<QListWidget *>("lstMaterials1")->setCurrentRow(1, QItemSelectionModel::ClearAndSelect);
        dialog->findChild<QPushButton *>("cmdAdd")->click();
        auto *pending = dialog->findChild<QListWidget *>("lstMaterials2");
        pending->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
        ui.nextInput("Eye");
        dialog->findChild<QPushButton *>("cmdRename")->click();
        QCOMPARE(pending->item(0)->text(), QString("Eye"));
        dialog->findChild<QPushButton *>("cmdOK")->click();
    });
    click("cmdCreateMat");
    QCOMPARE(list->count(), 3);
    QCOMPARE(static_cast<QComboBox *>(find("cmbFigures"))->itemText(1), QString("actor head:1"));
    QVERIFY(session.FileModified);

    const std::string expected = std::string(GELVANE_TEST_DATA) + "/material-edit/";
    for (const bool p5 : {false, true}) {
        static_cast<QRadioButton *>(find(p5 ? "optPoserFormat_1" : "optPoserFormat_0"))->click();
        const std::string saved = home.file(p5 ? "p5.pz2" : "p4.pz2");
        ui.nextFile(saved);
        window.findChild<QAction *>("mnuSaveAs")->trigger();
        QCOMPARE(ReadFileBytes(saved), ReadFileBytes(expected + (p5 ? "expected-p5.pz2" : "expected-p4.pz2")));
    }

    // The saved pose reads back to what was saved: written again, the bytes are the same.
    ui.nextFile(home.file("p5.pz2"));
    window.findChild<QAction *>("mnuOpenPZ2")->trigger();
    QCOMPARE(list->count(), 3);
    QCOMPARE(session.Figures[0].Materials[1].KdColor, (Rgb{51, 102, 153}));
    QCOMPARE(session.Figures[1].Materials[0].Name, std::string("Eye"));
    ui.nextFile(home.file("again.pz2"));
    window.findChild<QAction *>("mnuSaveAs")->trigger();
    QCOMPARE(ReadFileBytes(home.file("again.pz2")), ReadFileBytes(expected + "expected-p5.pz2"));
}

// The page with one and with several materials selected and with a property disabled,
// on the demo character and on a real one.
void MaterialPageTest::demoAndCorpusCharacters() {
    WindowOnHome m([](Settings &settings) {
        settings.PoserFolder = std::string(GELVANE_SOURCE_DIR) + "/examples";
        settings.AutoCorrect = false;
    });
    auto &[home, settings, ui, session, thumbnails, window] = m;
    ConnectThumbnails(session, thumbnails);

    ui.nextFile(settings.PoserFolder + "/Runtime/Libraries/Character/Demo/Gelvane Mannequin.cr2");
    ui.nextAnswer(MsgResult::No);
    window.findChild<QAction *>("mnuOpenCR2")->trigger();
    auto *list = window.findChild<QListWidget *>("lstMaterials");
    QVERIFY(list->count() >= 3);
    QVERIFY(!window.findChild<QLabel *>("imgThumb_0")->pixmap().isNull());
    QVERIFY(window.findChild<QPushButton *>("cmd_1")->isEnabled()); // the object's Delete
    SaveScreenshot(&window, "material-page");
    list->item(2)->setSelected(true);
    QCOMPARE(MaterialPageOf(session).SelectedMaterials, (std::vector<int>{0, 2}));
    SaveScreenshot(&window, "material-page-several");
    QTest::mouseDClick(window.findChild<QLabel *>("lblBumpPath"), Qt::LeftButton);
    QVERIFY(window.findChild<QLabel *>("lblCloseBumpMap")->isVisible());
    SaveScreenshot(&window, "material-page-disabled");

    ui.nextFile(CorpusPath("sl_avatar/SL_Male.cr2"));
    ui.nextAnswer(MsgResult::No);
    session.FileModified = false;
    window.findChild<QAction *>("mnuOpenCR2")->trigger();
    QVERIFY(list->count() > 1);
    window.findChild<QPushButton *>("cmd_0")->click();
    QCOMPARE(list->selectedItems().size(), list->count());
    SaveScreenshot(&window, "material-page-corpus");
}

QTEST_MAIN(MaterialPageTest)
#include "MaterialPageTest.moc"
