#include "core/app/MainWindowState.h"
#include "core/maps/MapCheck.h"
#include "core/maps/MapPaths.h"
#include "core/maps/Thumbnails.h"
#include "core/materials/MaterialPageState.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/reader/OpenFile.h"
#include "gui/FileDialogs.h"
#include "gui/channels/PosePage.h"
#include "gui/materials/MaterialPage.h"
#include "gui/reader/FigureWindow.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

#include <filesystem>

using namespace gelvane;

namespace {

Material Named(const std::string &name) {
    Material m;
    m.Name = name;
    return m;
}

// Two figures with materials and one actor row behind them.
void FillTwoFigures(Session &session) {
    session.Figures.clear();
    Figure figure;
    figure.Name = "Figure 1";
    figure.Materials = {Named("Skin"), Named("Eyes"), Named("Lips")};
    session.Figures.push_back(figure);
    Figure hair;
    hair.Name = "Hair";
    hair.Materials = {Named("HairMat")};
    session.Figures.push_back(hair);
    session.cmbFigures = {"Figure 1", "Hair", "actor hip"};
    session.View.cmdDeleteEnabled = true;
    cmbFigures_Click(session, 0); // as an open leaves it
}

QStringList Rows(const QListWidget *list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i)
        rows << list->item(i)->text();
    return rows;
}

QStringList Rows(const QTreeWidget *list, int column) {
    QStringList rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        rows << list->topLevelItem(i)->text(column);
    return rows;
}

std::string WritePng(const std::string &path, int w, int h, QColor color) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(color);
    image.save(QString::fromStdString(path));
    return path;
}

QRgb Centre(const QLabel *label) {
    const QImage image = label->pixmap().toImage();
    return image.pixel(image.width() / 2, image.height() / 2);
}

// Runs `work` on the modal dialog that `open` brings up, once it is there.
template <class Dialog> void WhenModal(std::function<void(Dialog *)> work) {
    QTimer::singleShot(0, [work] {
        QTRY_VERIFY(qobject_cast<Dialog *>(QApplication::activeModalWidget()) != nullptr);
        work(qobject_cast<Dialog *>(QApplication::activeModalWidget()));
    });
}

// A scripted interaction whose faults fail the running Qt test.
struct Script : test::ScriptedInteraction {
    Script() {
        onFailure([](const std::string &fault) { QTest::qFail(fault.c_str(), __FILE__, __LINE__); });
    }
};

} // namespace

class PagesTest : public QObject {
    Q_OBJECT

private slots:
    void materialPageWaitsWithNothingLoaded();
    void materialPageShowsObjectsAndMaterials();
    void materialPageShowsCachedThumbnails();
    void fullMapPathsBoxDecidesTheRepairedForm();
    void posePageListsActorsAndDials();
    void nameFilters();
    void previewPanelShowsThumbnailOrNA();
    void fileDialogPreviewsAndReturnsThePath();
    void figureWindowListsByNameOrGeometry();
    void figureWindowWithOneFigureClosesItself();
    void figureWindowOpensTheChosenFigureOfATwoFigureFile();
};

void PagesTest::materialPageWaitsWithNothingLoaded() {
    Settings settings;
    Script ui;
    Session session(settings, ui);
    ThumbnailCache thumbnails;
    MaterialPage page(session, thumbnails);
    page.refresh();
    QVERIFY(!page.findChild<QComboBox *>("cmbFigures")->isEnabled());
    QVERIFY(!page.findChild<QPushButton *>("cmd_18")->isEnabled());
    QVERIFY(page.findChild<QComboBox *>("Combo1")->isEnabled());
}

void PagesTest::materialPageShowsObjectsAndMaterials() {
    Settings settings;
    Script ui;
    Session session(settings, ui);
    FillTwoFigures(session);
    ThumbnailCache thumbnails;
    MaterialPage page(session, thumbnails);
    page.show();
    page.refresh();

    auto *cmbFigures = page.findChild<QComboBox *>("cmbFigures");
    auto *lstMaterials = page.findChild<QListWidget *>("lstMaterials");
    QCOMPARE(cmbFigures->count(), 3);
    QCOMPARE(cmbFigures->currentText(), QString("Figure 1"));
    QVERIFY(cmbFigures->isEnabled());
    QCOMPARE(Rows(lstMaterials), QStringList({"Skin", "Eyes", "Lips"}));
    QVERIFY(lstMaterials->isEnabled());
    QCOMPARE(lstMaterials->currentRow(), 0);
    QVERIFY(lstMaterials->item(0)->isSelected());
    QCOMPARE(session.View.lstMaterialsIndex, 0);

    // A refresh keeps the user's choice of material.
    lstMaterials->setCurrentRow(2);
    page.refresh();
    QCOMPARE(lstMaterials->currentRow(), 2);
    QCOMPARE(session.View.lstMaterialsIndex, 2);

    // The rule of the shown row runs on the widget's selection.
    lstMaterials->item(0)->setSelected(true);
    lstMaterials->item(2)->setSelected(false);
    QCOMPARE(lstMaterials->currentRow(), 0);

    QSignalSpy chosen(&page, &MaterialPage::objectChosen);
    cmbFigures->setFocus();
    QTest::keyClick(cmbFigures, Qt::Key_Down);
    QCOMPARE(session.View.cmbFiguresIndex, 1);
    QCOMPARE(Rows(lstMaterials), QStringList({"HairMat"}));
    QCOMPARE(session.View.lstMaterials, std::vector<std::string>{"HairMat"});
    QCOMPARE(chosen.count(), 1);

    // An actor row has no materials: the list empties and waits.
    QTest::keyClick(cmbFigures, Qt::Key_Down);
    QCOMPARE(lstMaterials->count(), 0);
    QVERIFY(!lstMaterials->isEnabled());
    QTest::keyClick(cmbFigures, Qt::Key_Up);

    // The templates of the session, and the hook that loads a chosen one.
    std::vector<int> loaded;
    session.LoadTemplateGroups = [&](int row) { loaded.push_back(row); };
    session.View.Combo1 = {"Victoria", "Michael"};
    session.View.Combo1Index = 0;
    page.refresh();
    auto *combo1 = page.findChild<QComboBox *>("Combo1");
    QCOMPARE(combo1->count(), 2);
    QVERIFY(combo1->isEnabled());
    combo1->setFocus();
    QTest::keyClick(combo1, Qt::Key_Down);
    QCOMPARE(loaded, std::vector<int>{1});
    QCOMPARE(session.View.Combo1Index, 1);
}

void PagesTest::materialPageShowsCachedThumbnails() {
    test::TestHome home;
    Settings settings;
    Script ui;
    Session session(settings, ui);
    FillTwoFigures(session);
    const std::string texture = WritePng(home.file("Maps/Skin.png"), 40, 40, Qt::red);
    session.Figures[0].Materials[0].textureMap = texture;
    session.Figures[0].Materials[0].bumpMap = "NO_MAP";
    session.Figures[0].Materials[0].reflectionMap = home.file("Maps/missing.jpg");
    ThumbnailCache thumbnails;
    ConnectThumbnails(session, thumbnails);
    session.LoadThumbNail(FullMapPath(settings.PoserFolder, texture));
    ShowSelectedMaterial(session); // the maps were set behind the page's back

    MaterialPage page(session, thumbnails);
    page.refresh();
    auto *texThumb = page.findChild<QLabel *>("imgThumb_0");
    QVERIFY(!texThumb->pixmap().isNull());
    QVERIFY(texThumb->isEnabled());
    QVERIFY(page.findChild<QLabel *>("lblThumb_0")->isEnabled());
    QCOMPARE(QColor(Centre(texThumb)), QColor(Qt::red));
    for (int i = 1; i < 4; ++i) {
        auto *thumb = page.findChild<QLabel *>(QString("imgThumb_%1").arg(i));
        QVERIFY(thumb->pixmap().isNull());
        QVERIFY(!thumb->isEnabled());
    }
    // Another material without maps empties the thumbnail.
    page.findChild<QListWidget *>("lstMaterials")->setCurrentRow(1);
    QVERIFY(texThumb->pixmap().isNull());
    QVERIFY(!texThumb->isEnabled());
}

void PagesTest::fullMapPathsBoxDecidesTheRepairedForm() {
    test::TestHome home;
    Settings settings;
    settings.PoserFolder = home.path();
    const std::string texture = home.write("Runtime/Textures/Skin/A.jpg", "x");
    Script ui;
    Session session(settings, ui);
    FillTwoFigures(session);
    session.Figures[0].Materials[0].textureMap = ":Runtime:Textures:Skin:a.jpg";
    ThumbnailCache thumbnails;
    MaterialPage page(session, thumbnails);
    page.refresh();

    page.findChild<QCheckBox *>("chkTexture")->click();
    FixMaps(session, 0, {0}, MapField::Texture);
    QCOMPARE(session.Figures[0].Materials[0].textureMap, texture);
    page.findChild<QCheckBox *>("chkTexture")->click();
    FixMaps(session, 0, {0}, MapField::Texture);
    QCOMPARE(session.Figures[0].Materials[0].textureMap, std::string(":Runtime:Textures:Skin:A.jpg"));
}

void PagesTest::posePageListsActorsAndDials() {
    Settings settings;
    settings.AutoCorrect = false;
    Script ui;
    Session session(settings, ui);
    PosePage page(session);
    page.refresh();
    auto *lstActors = page.findChild<QTreeWidget *>("lstActors");
    auto *lstDials = page.findChild<QTreeWidget *>("lstDials");
    QCOMPARE(lstActors->topLevelItemCount(), 0);
    QVERIFY(!lstActors->isEnabled());

    // A pose with two actors, read by the channel loader.
    test::TestHome home;
    const std::string dial = "\t\t\t{\n\t\t\tkeys\n\t\t\t\t{\n\t\t\t\tk  0  1\n\t\t\t\t}\n\t\t\t}\n";
    session.DialogFileName =
        home.write("two-actors.pz2", "{\n\nversion\n\t{\n\tnumber 4.01\n\t}\nactor BODY:1\n\t{\n\tchannels\n\t\t{\n"
                                     "\t\ttranslateX xTran\n" +
                                         dial + "\t\ttargetGeom Smile\n" + dial +
                                         "\t\t}\n\t}\nactor hip:1\n\t{\n\tchannels\n\t\t{\n\t\trotateX xrot\n" + dial +
                                         "\t\t}\n\t}\n}\n");
    session.CommandLineOpen = true;
    session.PoserFileKind = KindPZ2;
    OpenFile(session);
    QVERIFY(!session.OpenFailed);
    page.refresh();
    QCOMPARE(Rows(lstActors, 0), QStringList({"BODY:1", "hip:1"}));
    QVERIFY(lstActors->isEnabled());
    QCOMPARE(lstActors->currentItem(), lstActors->topLevelItem(0));
    QCOMPARE(Rows(lstDials, 0), QStringList({"xTran", "Smile"}));
    QCOMPARE(Rows(lstDials, 1), QStringList({"translateX", "targetGeom"}));

    // A click on the second actor lists its dials; a click on a dial shows its value.
    page.show();
    QTest::mouseClick(lstActors->viewport(), Qt::LeftButton, {},
                      lstActors->visualItemRect(lstActors->topLevelItem(1)).center());
    QCOMPARE(session.Pose.CurrentActor, int16_t(2));
    QCOMPARE(Rows(lstDials, 0), QStringList({"xrot"}));
    QVERIFY(lstActors->topLevelItem(1)->isSelected());
    auto *deleteDials = page.findChild<QPushButton *>("cmdDeleteDials");
    QVERIFY(!deleteDials->isEnabled());
    QTest::mouseClick(lstDials->viewport(), Qt::LeftButton, {},
                      lstDials->visualItemRect(lstDials->topLevelItem(0)).center());
    auto *value = page.findChild<QLineEdit *>("txtDialProperties_0");
    QCOMPARE(value->text(), QString("1"));
    QVERIFY(page.findChild<QCheckBox *>("chkEnableDial_0")->isChecked());
    QVERIFY(deleteDials->isEnabled());

    // Typed and applied; the keys move through the actors as clicks do.
    value->clear();
    QTest::keyClicks(value, "-.5");
    page.findChild<QPushButton *>("cmdApplyDial_0")->click();
    QCOMPARE(session.Actors[1].Channels[0].Value, -0.5);
    QTest::keyClick(lstActors, Qt::Key_Up);
    QCOMPARE(session.Pose.CurrentActor, int16_t(1));
    QCOMPARE(Rows(lstDials, 0), QStringList({"xTran", "Smile"}));

    // The group buttons toggle their captions and the boxes they stand for.
    auto *camera = page.findChild<QPushButton *>("cmdCheckAll_1");
    camera->click();
    QCOMPARE(camera->text(), QString("Check none"));
    QVERIFY(page.findChild<QCheckBox *>("chkDelChannels_12")->isChecked());
    QVERIFY(page.findChild<QPushButton *>("cmdDelChannels")->isEnabled());

    // "Don't save morphs or poses" switches the page off.
    session.Options.chkNoMaterialData = false;
    chkChannels_Click(session, true);
    page.refresh();
    QVERIFY(!lstActors->isEnabled());
    QVERIFY(!lstDials->isEnabled());
    QVERIFY(!page.findChild<QCheckBox *>("chkEnable_3")->isEnabled());
}

void PagesTest::nameFilters() {
    QCOMPARE(NameFiltersOf("Characters|*.cr2|All files|*.*"),
             QStringList({"Characters (*.cr2 *.CR2)", "All files (*)"}));
    QCOMPARE(NameFiltersOf("All image files|*.jpg;*.bum|"), QStringList({"All image files (*.jpg *.JPG *.bum *.BUM)"}));
    QCOMPARE(NameFiltersOf(""), QStringList());
}

void PagesTest::previewPanelShowsThumbnailOrNA() {
    test::TestHome home;
    const std::string picture = WritePng(home.file("pic.png"), 30, 60, Qt::blue);
    const std::string figure = home.write("Man.cr2", "{\n}\n");
    WritePng(home.file("Man.png"), 50, 50, Qt::green);
    const std::string pose = home.write("Pose.pz2", "{\n}\n");

    ThumbnailCache thumbnails;
    PreviewPanel panel(thumbnails);
    auto *pic = panel.findChild<QLabel *>("picPreview");
    auto *check = panel.findChild<QCheckBox *>("chkPreview");
    QVERIFY(pic && check);

    panel.PreviewSelectedFile(QString::fromStdString(picture));
    QCOMPARE(QColor(Centre(pic)), QColor(Qt::blue));
    QVERIFY(thumbnails.Contains(picture, 1));

    panel.PreviewSelectedFile(QString::fromStdString(figure));
    QCOMPARE(QColor(Centre(pic)), QColor(Qt::green));

    panel.PreviewSelectedFile(QString::fromStdString(pose)); // no picture beside it
    const QImage na = pic->pixmap().toImage().convertToFormat(QImage::Format_RGB32);
    QVERIFY(!na.isNull());
    // Grey letters on black, nothing of the pictures before.
    int lettered = 0;
    for (int y = 0; y < na.height(); ++y)
        for (int x = 0; x < na.width(); ++x) {
            const QRgb p = na.pixel(x, y);
            QVERIFY(qRed(p) == qGreen(p) && qGreen(p) == qBlue(p));
            lettered += qRed(p) > 100;
        }
    QVERIFY(lettered > 50);

    // A picture whose content is of another kind than its extension names shows "NA" too.
    const std::string secret = home.write("secret.txt", "local text\n");
    for (const std::string &hostile :
         {home.write("mvg.png", "viewbox 0 0 8 8\nimage over 0,0 8,8 \"text:" + secret + "\"\n"),
          home.write("svg.jpg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"/>\n"),
          home.write("text.tif", "plain text\n")}) {
        panel.PreviewSelectedFile(QString::fromStdString(hostile));
        QCOMPARE(pic->pixmap().toImage().convertToFormat(QImage::Format_RGB32), na);
        QVERIFY(!thumbnails.Contains(hostile, 1));
    }

    // A folder changes nothing; unchecking empties the picture and stops previews.
    panel.PreviewSelectedFile(QString::fromStdString(home.path()));
    QCOMPARE(pic->pixmap().toImage().convertToFormat(QImage::Format_RGB32), na);
    check->setChecked(false);
    QVERIFY(pic->pixmap().isNull());
    panel.PreviewSelectedFile(QString::fromStdString(picture));
    QVERIFY(pic->pixmap().isNull());
}

void PagesTest::fileDialogPreviewsAndReturnsThePath() {
    test::TestHome home;
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
        QCOMPARE(QColor(Centre(pic)), QColor(Qt::yellow));
        dialog->selectFile(QString::fromStdString(figure));
        static_cast<QDialog *>(dialog)->accept();
        checked = true;
    });
    const auto chosen = ShowFileDialog(nullptr, request, thumbnails);
    QVERIFY(checked);
    QVERIFY(chosen.has_value());
    QCOMPARE(QString::fromStdString(*chosen), QString::fromStdString(figure));
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
}

void PagesTest::figureWindowListsByNameOrGeometry() {
    FigureWindow window({"Figure 1", "Figure 2"}, {"Man.obj", "Woman.obj"});
    auto *cmbFigure = window.findChild<QComboBox *>("cmbFigure");
    auto *optName = window.findChild<QRadioButton *>("optName");
    auto *optGeom = window.findChild<QRadioButton *>("optGeom");
    QVERIFY(cmbFigure && optName && optGeom);
    QVERIFY(optName->isChecked());
    QCOMPARE(cmbFigure->itemText(1), QString("Figure 2"));
    QCOMPARE(cmbFigure->currentIndex(), 0);

    cmbFigure->setCurrentIndex(1);
    optGeom->setChecked(true);
    QCOMPARE(cmbFigure->itemText(0), QString("Man.obj"));
    QCOMPARE(cmbFigure->currentIndex(), 1);

    WhenModal<FigureWindow>(
        [](FigureWindow *shown) { QTest::mouseClick(shown->findChild<QPushButton *>("cmdOK"), Qt::LeftButton); });
    QCOMPARE(window.exec(), int(QDialog::Accepted));
    QCOMPARE(window.selectedFigure(), 1);
}

void PagesTest::figureWindowWithOneFigureClosesItself() {
    FigureWindow window({"Only"}, {"Only.obj"});
    QCOMPARE(window.exec(), int(QDialog::Accepted));
    QCOMPARE(window.selectedFigure(), 0);
}

void PagesTest::figureWindowOpensTheChosenFigureOfATwoFigureFile() {
    test::TestHome home;
    Settings settings;
    settings.AutoCorrect = false;
    Script ui;
    Session session(settings, ui);
    session.DialogFileName = home.write("two-figures.cr2", test::ReadTestData("figures/two-figures.cr2"));
    session.PoserFileKind = KindCR2;
    session.MultiFigure = true;
    ui.nextAnswer(MsgResult::No); // no channels

    QStringList listed;
    WhenModal<FigureWindow>([&](FigureWindow *window) {
        for (int i = 0; i < window->cmbFigure()->count(); ++i)
            listed << window->cmbFigure()->itemText(i);
        window->cmbFigure()->setCurrentIndex(1);
        QTest::mouseClick(window->findChild<QPushButton *>("cmdOK"), Qt::LeftButton);
    });
    ShowFigureWindow(session, nullptr);
    QCOMPARE(listed, QStringList({"Tester", "Other Figure"}));
    QVERIFY(!session.OpenFailed);
    QVERIFY(!IsEmptyList(session.Figures));
    QCOMPARE(session.Figures[0].Materials.size(), size_t(2));
    QCOMPARE(session.Figures[0].Materials[0].Name, std::string("Cloth"));

    // Closing the window without OK opens nothing.
    session.Figures.assign(1, Figure{});
    WhenModal<FigureWindow>([](FigureWindow *window) { window->reject(); });
    ShowFigureWindow(session, nullptr);
    QVERIFY(IsEmptyList(session.Figures));
}

QTEST_MAIN(PagesTest)
#include "PagesTest.moc"
