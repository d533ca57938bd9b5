// The main window driven as a user would: menu entries by name, dialogs
// answered by a scripted interaction, widgets found by their control names.
#include "gui/MainWindow.h"

#include "core/platform/Paths.h"
#include "gui/PleaseWaitWindow.h"
#include "gui/QtInteraction.h"
#include "support/QtSupport.h"

#include <memory>

using namespace gelvane;
using namespace gelvane::test;

namespace {

const std::string kDemoPath = std::string(GELVANE_TEST_DATA) + "/gui/demo.pz2";

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private:
    // A fresh window for each test; the map reference check is off, as its repairs count as changes.
    std::unique_ptr<WindowOnHome> m;

    template <class T> T *widget(const char *name) { return Child<T>(&m->window, name); }
    QAction *entry(const char *name) { return widget<QAction>(name); }

    void openDemo() {
        m->ui.nextFile(kDemoPath);
        entry("mnuOpenPZ2")->trigger();
    }

private slots:
    void init() {
        m = std::make_unique<WindowOnHome>([](Settings &settings) { settings.AutoCorrect = false; });
    }
    void cleanup() { m.reset(); }

    void menusAtStart() {
        // What needs a loaded file waits for one.
        for (const char *name : {"mnuSave", "mnuSaveAs", "mnuExportMTL", "mnuFileInfo", "mnuPoser"})
            QVERIFY2(!entry(name)->isEnabled(), name);

        // A window given for an entry switches the entry on.
        int opened = 0;
        m->window.setWindowOpener("mnuImport", [&](QWidget *) { ++opened; });
        QVERIFY(entry("mnuImport")->isEnabled());
        entry("mnuImport")->trigger();
        QCOMPARE(opened, 1);
    }

    void startUpFollowsTheSettings() {
        m->settings.SaveAsP4 = false;
        m->settings.FileSystemDOS = false;
        m->settings.PoserFolder = m->home.path();
        m->window.StartUp("/no/such/file.txt");
        QVERIFY(widget<QRadioButton>("optPoserFormat_1")->isChecked());
        QVERIFY(widget<QRadioButton>("optFileSystem_1")->isChecked() && entry("mnuPoser")->isEnabled());
        // An unknown kind opens nothing but leaves the command line pending.
        QVERIFY(m->session.CommandLineOpen && m->ui.fileRequests().empty());

        // Run Poser with a folder that has no Poser.exe.
        entry("mnuPoser")->trigger();
        QCOMPARE(m->ui.messages().back().Text, "Poser executable could not be found in\r\n" + m->home.path() + ".");
    }

    void saveOptionsEditTheSession() {
        widget<QRadioButton>("optFileSystem_1")->click();
        QVERIFY(!m->session.Options.FileSystemDOS);
        // The format brings the version number of its setting into the version box.
        m->settings.P5VersionNumber = "5.0";
        auto *version = widget<QLineEdit>("TXT_0");
        widget<QRadioButton>("optPoserFormat_1")->click();
        QVERIFY(m->session.Options.PoserFormatP5);
        QCOMPARE(version->text(), QString("5.0"));
        version->clear();
        QTest::keyClicks(version, "6.0");
        QCOMPARE(m->session.OutputVersion, std::string("6"));

        // A refused box is unchecked again.
        m->session.Figures[0].Name = "figure";
        widget<QCheckBox>("chkChannels")->click();
        auto *materials = widget<QCheckBox>("chkNoMaterialData");
        materials->click();
        QVERIFY(!materials->isChecked());
        QCOMPARE(m->ui.messages().size(), size_t(1));
    }

    void closingAsksOnlyWithChanges() {
        QVERIFY(m->window.close());
        m->window.show();
        m->session.FileModified = true;
        m->ui.nextAnswer(MsgResult::Cancel);
        QVERIFY(!m->window.close());
        QVERIFY(m->window.isVisible());
        QCOMPARE(m->ui.messages().back().Text, std::string("Do you want to save before exiting?"));
    }

    void poseTabClicksTheFirstActorAndDeletingAllSwitchesChannelsOff() {
        openDemo();
        auto *actors = widget<QTreeWidget>("lstActors");
        QVERIFY(!actors->topLevelItem(0)->isSelected());
        widget<QTabWidget>("tbsOptions")->setCurrentIndex(1);
        QVERIFY(actors->topLevelItem(0)->isSelected());
        QCOMPARE(widget<QLineEdit>("txtDialProperties_0")->text(), QString("12.5"));

        widget<QPushButton>("cmdDeleteActors")->click();
        QCOMPARE(actors->topLevelItemCount(), 0);
        QVERIFY(widget<QCheckBox>("chkChannels")->isChecked());
        QVERIFY(!widget<QCheckBox>("chkChannels")->isEnabled());
        QVERIFY(entry("mnuSave")->isEnabled()); // the materials can still be saved
        QVERIFY(m->session.FileModified);
    }

    void droppedPoseOpensWithoutADialog() {
        DropFiles(&m->window, {QString::fromStdString(kDemoPath)});
        QVERIFY(m->ui.fileRequests().empty());
        QCOMPARE(m->window.windowTitle(), QString("Gelvane - [demo.pz2]"));
    }

    void openAndSaveAsRedrawTheWindow() {
        openDemo();
        QCOMPARE(m->ui.fileRequests().at(0).Title, std::string("Open Pose file"));
        QCOMPARE(m->window.windowTitle(), QString("Gelvane - [demo.pz2]"));
        auto *objects = widget<QComboBox>("cmbFigures");
        QVERIFY(objects->findText("figure") >= 0 && objects->isEnabled());
        QCOMPARE(Rows(widget<QListWidget>("lstMaterials")), QStringList({"Skin", "Eyes"}));
        QVERIFY(entry("mnuSave")->isEnabled() && entry("mnuSaveAs")->isEnabled());
        QVERIFY(!m->session.FileModified);

        widget<QRadioButton>("optFileSystem_1")->click();
        const std::string saved = m->home.file("out.pz2");
        m->ui.nextFile(saved);
        entry("mnuSaveAs")->trigger();
        QCOMPARE(m->window.windowTitle(), QString("Gelvane - [out.pz2]"));
        // The line ends chosen on the page reach the writer.
        const std::string bytes = ReadFileBytes(saved);
        QVERIFY(bytes.find("\r\n") == std::string::npos && bytes.find("\tmaterial Skin\r") != std::string::npos);
    }

    void escRequestsCancelInTheProgressWindow() {
        QtInteraction ui(m->thumbnails);
        ui.setOwner(&m->window);
        ui.ProgressShow("Please wait", "Reading file...", 10);
        PleaseWaitWindow *window = ui.progressWindow();
        QCOMPARE(window->findChild<QLabel *>("lblPleaseWait")->text(), QString("Reading file..."));
        ui.ProgressDetail("Skin...");
        ui.ProgressValue(4);
        QCOMPARE(window->findChild<QProgressBar *>("ProgressBar1")->value(), 4);

        // The key only arrives while the loop lets events run.
        QTimer::singleShot(0, window, [window] { QTest::keyClick(window, Qt::Key_A); });
        QTimer::singleShot(0, window, [window] { QTest::keyClick(window, Qt::Key_Escape); });
        QVERIFY(!ui.ProgressCancelling());
        for (int rounds = 0; !ui.ProgressCancelling() && rounds < 1000; ++rounds)
            ui.DoEvents();
        QVERIFY(ui.ProgressCancelling());
        QTest::keyClick(window, Qt::Key_Escape);
        QCOMPARE(window->status(), QString("Cancelling..."));
        // Rewriting the status line drops the request.
        ui.ProgressStatus("Loading materials...");
        QVERIFY(!ui.ProgressCancelling());

        ui.ProgressClose();
        QVERIFY(!ui.progressWindow() && !ui.ProgressVisible());
        // Without a bar count the bar and the detail line stay hidden.
        ui.ProgressShow(" Please wait", "Reading data...", -1);
        QVERIFY(ui.progressWindow()->findChild<QLabel *>("lblFigure")->text().isEmpty());
        QVERIFY(!ui.progressWindow()->findChild<QProgressBar *>("ProgressBar1")->isVisibleTo(ui.progressWindow()));
        ui.ProgressClose();
    }

    void messageBoxesOfTheQtInteraction() {
        QtInteraction ui(m->thumbnails);
        ui.setOwner(&m->window);
        int redraws = 0;
        ui.setBeforeMessage([&redraws] { ++redraws; });
        QString title, text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        const auto closeBox = [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            box->close(); // like the title bar's close button
        };
        QTimer::singleShot(0, this, closeBox);
        QCOMPARE(ui.MessageBox("First line\r\nsecond line", kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK),
                 MsgResult::OK);
        QCOMPARE(std::tuple(title, text, icon, redraws),
                 std::tuple(QString("Gelvane"), QString("First line\nsecond line"), QMessageBox::Warning, 1));

        QTimer::singleShot(0, this, closeBox);
        QCOMPARE(ui.MessageBox("Save?", kProgramTitle, MsgIcon::None, MsgButtons::YesNo), MsgResult::No);
        QCOMPARE(icon, QMessageBox::NoIcon);
        QTimer::singleShot(0, this, closeBox);
        QCOMPARE(ui.MessageBox("Save?", kProgramTitle, MsgIcon::None, MsgButtons::YesNoCancel), MsgResult::Cancel);
        QCOMPARE(redraws, 3);
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
