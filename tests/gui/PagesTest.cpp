#include "core/app/MainWindowState.h"
#include "core/maps/MapPaths.h"
#include "core/materials/MaterialPageState.h"
#include "core/reader/ActorLoader.h"
#include "gui/FileDialogs.h"
#include "gui/channels/PosePage.h"
#include "gui/materials/MaterialPage.h"
#include "gui/reader/FigureWindow.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

// A session on a temporary home and the material page over it.
struct MaterialPageOn {
    template <class T> T *child(const char *name) { return page.findChild<T *>(name); }
    // Shows the loaded figures as an open leaves them.
    void opened() {
        session.View.cmdDeleteEnabled = true;
        cmbFigures_Click(session, 0);
        page.refresh();
    }

    TestHome home;
    Settings settings;
    QtScript ui;
    Session session{settings, ui};
    ThumbnailCache thumbnails;
    MaterialPage page{session, thumbnails};
};

} // namespace

class PagesTest : public QObject {
    Q_OBJECT

private slots:
    void materialPageShowsObjectsAndMaterials();
    void materialPageShowsCachedThumbnails();
    void posePageListsActorsAndDials();
    void previewPanelShowsThumbnailOrNA();
    void fileDialogPreviewsAndReturnsThePath();
    void figureWindowListsByNameOrGeometry();
    void figureWindowOpensTheChosenFigureOfATwoFigureFile();
};

void PagesTest::materialPageShowsObjectsAndMaterials() {
    MaterialPageOn m;
    auto *cmbFigures = m.child<QComboBox>("cmbFigures");
    auto *lstMaterials = m.child<QListWidget>("lstMaterials");
    m.page.refresh();
    QVERIFY(!cmbFigures->isEnabled() && !m.child<QPushButton>("cmd_18")->isEnabled());
    QVERIFY(m.child<QComboBox>("Combo1")->isEnabled());

    m.page.show();
    FillTwoFigures(m.session);
    m.opened();
    QVERIFY(cmbFigures->count() == 3 && cmbFigures->isEnabled() && lstMaterials->item(0)->isSelected());
    QCOMPARE(Rows(lstMaterials), QStringList({"Skin", "Eyes", "Lips"}));
    // A refresh keeps the user's choice of material.
    lstMaterials->setCurrentRow(2);
    m.page.refresh();
    QCOMPARE(lstMaterials->currentRow(), 2);
    QCOMPARE(m.session.View.lstMaterialsIndex, 2);
    // The rule of the shown row runs on the widget's selection.
    lstMaterials->item(0)->setSelected(true);
    lstMaterials->item(2)->setSelected(false);
    QCOMPARE(lstMaterials->currentRow(), 0);

    QSignalSpy chosen(&m.page, &MaterialPage::objectChosen);
    cmbFigures->setFocus();
    QTest::keyClick(cmbFigures, Qt::Key_Down);
    QCOMPARE(Rows(lstMaterials), QStringList({"Band"}));
    QCOMPARE(chosen.count(), 1);
    // An actor row has no materials: the list empties and waits.
    QTest::keyClick(cmbFigures, Qt::Key_Down);
    QCOMPARE(lstMaterials->count(), 0);
    QVERIFY(!lstMaterials->isEnabled());

    // The templates of the session, and the hook that loads a chosen one.
    std::vector<int> loaded;
    m.session.LoadTemplateGroups = [&](int row) { loaded.push_back(row); };
    m.session.View.Combo1 = {"Victoria", "Michael"};
    m.session.View.Combo1Index = 0;
    QTest::keyClick(cmbFigures, Qt::Key_Up);
    auto *combo1 = m.child<QComboBox>("Combo1");
    QCOMPARE(combo1->count(), 2);
    combo1->setFocus();
    QTest::keyClick(combo1, Qt::Key_Down);
    QCOMPARE(loaded, std::vector<int>{1});
    QCOMPARE(m.session.View.Combo1Index, 1);

    // "Use full map paths" is the session's.
    auto *fullPaths = m.child<QCheckBox>("chkTexture");
    fullPaths->click();
    QVERIFY(m.session.View.chkTexture);
    m.session.View.chkTexture = false;
    m.page.refresh();
    QVERIFY(!fullPaths->isChecked());
}

void PagesTest::materialPageShowsCachedThumbnails() {
    MaterialPageOn m;
    FillTwoFigures(m.session);
    Material &skin = m.session.Figures[0].Materials[0];
    skin.textureMap = WritePng(m.home.file("Maps/Skin.png"), 40, 40, Qt::red);
    skin.bumpMap = "NO_MAP";
    skin.reflectionMap = m.home.file("Maps/missing.jpg");
    m.thumbnails.LoadThumbNail(FullMapPath(m.settings.PoserFolder, skin.textureMap), 0);
    m.opened();
    auto *texThumb = m.child<QLabel>("imgThumb_0");
    QVERIFY(texThumb->isEnabled() && m.child<QLabel>("lblThumb_0")->isEnabled());
    QCOMPARE(Centre(texThumb), QColor(Qt::red));
    for (const char *name : {"imgThumb_1", "imgThumb_2", "imgThumb_3"})
        QVERIFY(m.child<QLabel>(name)->pixmap().isNull() && !m.child<QLabel>(name)->isEnabled());
    // Another material without maps empties the thumbnail.
    m.child<QListWidget>("lstMaterials")->setCurrentRow(1);
    QVERIFY(texThumb->pixmap().isNull() && !texThumb->isEnabled());
}

void PagesTest::posePageListsActorsAndDials() {
    Settings settings;
    settings.ReportTime = false;
    QtScript ui;
    Session session(settings, ui);
    PosePage page(session);
    page.refresh();
    auto *lstActors = page.findChild<QTreeWidget *>("lstActors");
    auto *lstDials = page.findChild<QTreeWidget *>("lstDials");
    QVERIFY(lstActors->topLevelItemCount() == 0 && !lstActors->isEnabled());

    LoadActorSection(session, ReadTestData("channels/two-actors.pz2"));
    page.refresh();
    QCOMPARE(Rows(lstActors, 0), QStringList({"hip", "LIGHT_1"}));
    QVERIFY(lstActors->isEnabled() && lstActors->currentItem() == lstActors->topLevelItem(0));
    QCOMPARE(Rows(lstDials, 0), QStringList({"Belly", "yrot"}));
    QCOMPARE(Rows(lstDials, 1), QStringList({"targetGeom", "rotateY"}));

    // A click on the second actor lists its dials; a click on a dial shows its value.
    page.show();
    QTest::mouseClick(lstActors->viewport(), Qt::LeftButton, {},
                      lstActors->visualItemRect(lstActors->topLevelItem(1)).center());
    QCOMPARE(session.Pose.CurrentActor, int16_t(2));
    QCOMPARE(Rows(lstDials, 0), QStringList({"RED"}));
    QVERIFY(lstActors->topLevelItem(1)->isSelected());
    // The keys move through the actors as clicks do; a click on a dial shows its value.
    QTest::keyClick(lstActors, Qt::Key_Up);
    QCOMPARE(session.Pose.CurrentActor, int16_t(1));
    QCOMPARE(Rows(lstDials, 0), QStringList({"Belly", "yrot"}));
    auto *deleteDials = page.findChild<QPushButton *>("cmdDeleteDials");
    QVERIFY(!deleteDials->isEnabled());
    QTest::mouseClick(lstDials->viewport(), Qt::LeftButton, {},
                      lstDials->visualItemRect(lstDials->topLevelItem(0)).center());
    auto *value = page.findChild<QLineEdit *>("txtDialProperties_0");
    QCOMPARE(value->text(), QString("0.5"));
    QVERIFY(page.findChild<QCheckBox *>("chkEnableDial_0")->isChecked() && deleteDials->isEnabled());
    // Typed and applied.
    value->clear();
    QTest::keyClicks(value, "-.5");
    page.findChild<QPushButton *>("cmdApplyDial_0")->click();
    QCOMPARE(session.Actors[0].Channels[0].Value, -0.5);

    // The group buttons toggle their captions and the boxes they stand for.
    auto *camera = page.findChild<QPushButton *>("cmdCheckAll_1");
    camera->click();
    QCOMPARE(camera->text(), QString("Check none"));
    QVERIFY(page.findChild<QCheckBox *>("chkDelChannels_12")->isChecked() &&
            page.findChild<QPushButton *>("cmdDelChannels")->isEnabled());

    // "Don't save morphs or poses" switches the page off.
    chkChannels_Click(session, true);
    page.refresh();
    QVERIFY(!lstActors->isEnabled() && !lstDials->isEnabled());
    QVERIFY(!page.findChild<QCheckBox *>("chkEnable_3")->isEnabled());
}

void PagesTest::previewPanelShowsThumbnailOrNA() {
    TestHome home;
    const std::string picture = WritePng(home.file("pic.png"), 30, 60, Qt::blue);
    const std::string pose = home.write("Pose.pz2", "{\n}\n");
    ThumbnailCache thumbnails;
    PreviewPanel panel(thumbnails);
    auto *pic = panel.findChild<QLabel *>("picPreview");
    auto *check = panel.findChild<QCheckBox *>("chkPreview");
    QVERIFY(pic && check);

    panel.PreviewSelectedFile(QString::fromStdString(picture));
    QCOMPARE(Centre(pic), QColor(Qt::blue));
    QVERIFY(thumbnails.Contains(picture, 1));
    panel.PreviewSelectedFile(QString::fromStdString(pose)); // no picture beside it
    const QImage na = pic->pixmap().toImage();
    QVERIFY(!na.isNull() && Centre(pic) != QColor(Qt::blue));
    // A picture whose content is of another kind than its extension names shows "NA" too.
    const std::string secret = home.write("secret.txt", "local text\n");
    for (const std::string &hostile :
         {home.write("mvg.png", "viewbox 0 0 8 8\nimage over 0,0 8,8 \"text:" + secret + "\"\n"),
          home.write("svg.jpg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"/>\n"),
          home.write("text.tif", "plain text\n")}) {
        panel.PreviewSelectedFile(QString::fromStdString(hostile));
        QCOMPARE(pic->pixmap().toImage(), na);
        QVERIFY(!thumbnails.Contains(hostile, 1));
    }
    // A folder changes nothing; unchecking empties the picture and stops previews.
    panel.PreviewSelectedFile(QString::fromStdString(home.path()));
    QCOMPARE(pic->pixmap().toImage(), na);
    check->setChecked(false);
    QVERIFY(pic->pixmap().isNull());
    panel.PreviewSelectedFile(QString::fromStdString(picture));
    QVERIFY(pic->pixmap().isNull());
}

void PagesTest::fileDialogPreviewsAndReturnsThePath() {
    TestHome home;
    ThumbnailCache thumbnails;
    const std::string figure = home.write("Figures/Two.cr2", "{\n}\n");
    WritePng(home.file("Figures/Two.png"), 20, 10, Qt::yellow);

    FileDialogRequest request;
    request.Title = "Open Character file";
    request.Filter = "Characters|*.cr2|All files|*.*";
    request.DefaultExt = "cr2";
    request.InitialDir = home.file("Figures");
    request.Flags = kOpenDialogFlags;
    request.Preview = true;

    bool checked = false;
    WhenModal<QFileDialog>([&](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Open Character file"));
        QCOMPARE(dialog->nameFilters(), QStringList({"Characters (*.cr2 *.CR2)", "All files (*)"}));
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
        QCOMPARE(dialog->defaultSuffix(), QString("cr2"));
        auto *pic = dialog->findChild<QLabel *>("picPreview");
        QVERIFY(pic);
        emit dialog->currentChanged(QString::fromStdString(figure));
        QCOMPARE(Centre(pic), QColor(Qt::yellow));
        dialog->selectFile(QString::fromStdString(figure));
        static_cast<QDialog *>(dialog)->accept();
        checked = true;
    });
    QCOMPARE(ShowFileDialog(nullptr, request, thumbnails), std::optional(figure));
    QVERIFY(checked);
    // The preview list lives only as long as the dialog.
    QVERIFY(thumbnails.Keys(1).empty());

    // Cancel is an empty answer; a save dialog has no preview unless asked.
    request.ForSave = true;
    request.Preview = false;
    WhenModal<QFileDialog>([](QFileDialog *dialog) {
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
        QVERIFY(!dialog->findChild<QLabel *>("picPreview"));
        QVERIFY(dialog->testOption(QFileDialog::DontConfirmOverwrite));
        dialog->reject();
    });
    QVERIFY(!ShowFileDialog(nullptr, request, thumbnails).has_value());

    WhenModal<QFileDialog>([&](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Look for maps in:"));
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        dialog->selectFile(QString::fromStdString(home.file("Figures")));
        static_cast<QDialog *>(dialog)->accept();
    });
    const auto folder = ShowFolderDialog(nullptr, home.path(), "Look for maps in:");
    QVERIFY(folder.has_value());
    QCOMPARE(std::filesystem::path(*folder), std::filesystem::path(home.file("Figures")));

    QCOMPARE(NameFiltersOf("All image files|*.jpg;*.bum|"), QStringList({"All image files (*.jpg *.JPG *.bum *.BUM)"}));
    QCOMPARE(NameFiltersOf(""), QStringList());
}

void PagesTest::figureWindowListsByNameOrGeometry() {
    FigureWindow window({"Figure 1", "Figure 2"}, {"Man.obj", "Woman.obj"});
    auto *cmbFigure = window.findChild<QComboBox *>("cmbFigure");
    auto *optName = window.findChild<QRadioButton *>("optName");
    auto *optGeom = window.findChild<QRadioButton *>("optGeom");
    QVERIFY(optName->isChecked());
    QCOMPARE(Rows(cmbFigure), QStringList({"Figure 1", "Figure 2"}));
    QCOMPARE(cmbFigure->currentIndex(), 0);
    cmbFigure->setCurrentIndex(1);
    optGeom->setChecked(true);
    QCOMPARE(Rows(cmbFigure), QStringList({"Man.obj", "Woman.obj"}));
    QCOMPARE(cmbFigure->currentIndex(), 1);

    WhenModal<FigureWindow>(
        [](FigureWindow *shown) { QTest::mouseClick(shown->findChild<QPushButton *>("cmdOK"), Qt::LeftButton); });
    QCOMPARE(window.exec(), int(QDialog::Accepted));
    QCOMPARE(window.selectedFigure(), 1);

    // With one figure there is nothing to choose: the window closes itself.
    FigureWindow one({"Only"}, {"Only.obj"});
    QCOMPARE(one.exec(), int(QDialog::Accepted));
    QCOMPARE(one.selectedFigure(), 0);
}

void PagesTest::figureWindowOpensTheChosenFigureOfATwoFigureFile() {
    Settings settings;
    settings.AutoCorrect = false;
    QtScript ui;
    Session session(settings, ui);
    session.DialogFileName = std::string(GELVANE_TEST_DATA) + "/figures/two-figures.cr2";
    session.PoserFileKind = KindCR2;
    session.MultiFigure = true;
    ui.nextAnswer(MsgResult::No); // no channels

    QStringList listed;
    WhenModal<FigureWindow>([&](FigureWindow *window) {
        listed = Rows(window->cmbFigure());
        window->cmbFigure()->setCurrentIndex(1);
        QTest::mouseClick(window->findChild<QPushButton *>("cmdOK"), Qt::LeftButton);
    });
    ShowFigureWindow(session, nullptr);
    QCOMPARE(listed, QStringList({"Tester", "Other Figure"}));
    QCOMPARE(session.Figures.at(0).Materials.at(0).Name, std::string("Cloth"));

    // Closing the window without OK opens nothing.
    session.Figures.assign(1, Figure{});
    WhenModal<FigureWindow>([](FigureWindow *window) { window->reject(); });
    ShowFigureWindow(session, nullptr);
    QVERIFY(IsEmptyList(session.Figures));
}

QTEST_MAIN(PagesTest)
#include "PagesTest.moc"
