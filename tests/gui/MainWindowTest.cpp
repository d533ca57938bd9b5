// The main window driven as a user would: menu entries by name, dialogs
// answered by a scripted interaction, widgets found by their control names.
#include "gui/MainWindow.h"

#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"
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
    std::unique_ptr<TestHome> m_home;
    Settings m_settings;
    ThumbnailCache m_thumbnails;
    std::unique_ptr<QtScript> m_ui;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<MainWindow> m_window;

    template <class T> T *widget(const char *name) {
        T *found = m_window->findChild<T *>(name);
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }
    QAction *entry(const char *name) { return widget<QAction>(name); }

    void openDemo() {
        m_ui->nextFile(kDemoPath);
        entry("mnuOpenPZ2")->trigger();
    }

private slots:
    void init() {
        m_home = std::make_unique<TestHome>();
        m_settings = Settings{};
        // The map reference check marks every open as modified; these tests watch the window alone.
        m_settings.AutoCorrect = false;
        m_ui = std::make_unique<QtScript>();
        m_session = std::make_unique<Session>(m_settings, *m_ui);
        m_window = std::make_unique<MainWindow>(*m_session, m_settings, m_thumbnails);
        m_window->StartUp("");
        m_window->show();
    }

    void cleanup() {
        m_session->FileModified = false; // no closing question while tearing down
        m_window.reset();
        m_session.reset();
        m_ui.reset();
        m_home.reset();
    }

    void menusAtStart() {
        // Only what needs a loaded file waits for one.
        for (const char *name : {"mnuOpenPZ2", "mnuOpenCR2Props", "mnuMultiFigure", "mnuExit", "mnuReadme", "mnuAbout"})
            QVERIFY2(entry(name)->isEnabled(), name);
        for (const char *name : {"mnuSave", "mnuSaveAs", "mnuExportMTL", "mnuFileInfo", "mnuPoser"})
            QVERIFY2(!entry(name)->isEnabled(), name);

        // A window given for an entry switches the entry on.
        int opened = 0;
        m_window->setWindowOpener("mnuImport", [&](QWidget *) { ++opened; });
        QVERIFY(entry("mnuImport")->isEnabled());
        entry("mnuImport")->trigger();
        QCOMPARE(opened, 1);
    }

    void startUpFollowsTheSettings() {
        m_settings.SaveAsP4 = false;
        m_settings.FileSystemDOS = false;
        m_settings.PoserFolder = m_home->path();
        m_window->StartUp("/no/such/file.txt");
        QVERIFY(widget<QRadioButton>("optPoserFormat_1")->isChecked());
        QVERIFY(widget<QRadioButton>("optFileSystem_1")->isChecked());
        QVERIFY(entry("mnuPoser")->isEnabled());
        // An unknown kind opens nothing but leaves the command line pending.
        QVERIFY(m_session->CommandLineOpen);
        QVERIFY(m_ui->fileRequests().empty());

        // Run Poser with a folder that has no Poser.exe.
        entry("mnuPoser")->trigger();
        QCOMPARE(m_ui->messages().back().Text, "Poser executable could not be found in\r\n" + m_home->path() + ".");
    }

    void saveOptionsEditTheSession() {
        widget<QRadioButton>("optFileSystem_1")->click();
        QVERIFY(!m_session->Options.FileSystemDOS);
        // The format brings the version number of its setting into the version box.
        m_settings.P5VersionNumber = "5.0";
        auto *version = widget<QLineEdit>("TXT_0");
        widget<QRadioButton>("optPoserFormat_1")->click();
        QVERIFY(m_session->Options.PoserFormatP5);
        QCOMPARE(version->text(), QString("5.0"));
        version->clear();
        QTest::keyClicks(version, "6.0");
        QCOMPARE(m_session->OutputVersion, std::string("6"));

        // A refused box is unchecked again.
        m_session->Figures[0].Name = "figure";
        widget<QCheckBox>("chkChannels")->click();
        auto *materials = widget<QCheckBox>("chkNoMaterialData");
        materials->click();
        QVERIFY(!materials->isChecked());
        QCOMPARE(m_ui->messages().size(), size_t(1));
    }

    void closingAsksOnlyWithChanges() {
        QVERIFY(m_window->close());
        m_window->show();
        m_session->FileModified = true;
        m_ui->nextAnswer(MsgResult::Cancel);
        QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        QCOMPARE(m_ui->messages().back().Text, std::string("Do you want to save before exiting?"));
    }

    void droppedPoseOpensWithoutADialog() {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(kDemoPath))});
        QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &drop);
        QVERIFY(m_ui->fileRequests().empty());
        QCOMPARE(m_window->windowTitle(), QString("Gelvane - [demo.pz2]"));
    }

    void openAndSaveAsGoThroughTheCore() {
        openDemo();
        QCOMPARE(m_ui->fileRequests().at(0).Title, std::string("Open Pose file"));
        QCOMPARE(m_window->windowTitle(), QString("Gelvane - [demo.pz2]"));
        auto *objects = widget<QComboBox>("cmbFigures");
        QVERIFY(objects->findText("figure") >= 0 && objects->isEnabled());
        QCOMPARE(Rows(widget<QListWidget>("lstMaterials")), QStringList({"Skin", "Eyes"}));
        QVERIFY(entry("mnuSave")->isEnabled() && entry("mnuSaveAs")->isEnabled());
        QVERIFY(!m_session->FileModified);

        widget<QRadioButton>("optFileSystem_1")->click();
        const std::string saved = m_home->file("out.pz2");
        m_ui->nextFile(saved);
        entry("mnuSaveAs")->trigger();
        QCOMPARE(m_window->windowTitle(), QString("Gelvane - [out.pz2]"));
        // The same file and options through the core alone.
        Settings settings;
        QtScript ui;
        Session session(settings, ui);
        session.CommandLineOpen = true;
        session.DialogFileName = kDemoPath;
        OpenFile(session);
        session.Options.FileSystemDOS = false;
        session.OutputPath = m_home->file("direct.pz2");
        WritePoseFile(session);
        const std::string bytes = ReadFileBytes(saved);
        QCOMPARE(bytes, ReadFileBytes(session.OutputPath));
        QVERIFY(bytes.find("\r\n") == std::string::npos && bytes.find("Skin") != std::string::npos);
    }

    void escRequestsCancelInTheProgressWindow() {
        QtInteraction ui(m_thumbnails);
        ui.setOwner(m_window.get());
        ui.ProgressShow("Please wait", "Reading file...", 10);
        PleaseWaitWindow *window = ui.progressWindow();
        QVERIFY(window);
        QCOMPARE(window->findChild<QLabel *>("lblPleaseWait")->text(), QString("Reading file..."));
        ui.ProgressDetail("Skin...");
        ui.ProgressValue(4);
        QCOMPARE(window->findChild<QProgressBar *>("ProgressBar1")->value(), 4);

        // The key only arrives while the loop lets events run.
        QTimer::singleShot(0, window, [window] { QTest::keyClick(window, Qt::Key_A); });
        QTimer::singleShot(0, window, [window] { QTest::keyClick(window, Qt::Key_Escape); });
        QVERIFY(!ui.ProgressCancelling());
        int rounds = 0;
        while (!ui.ProgressCancelling() && rounds < 1000) {
            ui.DoEvents();
            ++rounds;
        }
        QVERIFY(ui.ProgressCancelling());
        QTest::keyClick(window, Qt::Key_Escape);
        QCOMPARE(window->status(), QString("Cancelling..."));
        // Rewriting the status line drops the request.
        ui.ProgressStatus("Loading materials...");
        QVERIFY(!ui.ProgressCancelling());

        ui.ProgressClose();
        QVERIFY(!ui.progressWindow());
        QVERIFY(!ui.ProgressVisible());
        ui.ProgressShow(" Please wait", "Reading data...", -1);
        QVERIFY(ui.progressWindow()->findChild<QLabel *>("lblFigure")->text().isEmpty());
        QVERIFY(!ui.progressWindow()->findChild<QProgressBar *>("ProgressBar1")->isVisibleTo(ui.progressWindow()));
        ui.ProgressClose();
    }

    void messageBoxesOfTheQtInteraction() {
        QtInteraction ui(m_thumbnails);
        ui.setOwner(m_window.get());
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
        QCOMPARE(title, QString("Gelvane"));
        QCOMPARE(text, QString("First line\nsecond line"));
        QCOMPARE(icon, QMessageBox::Warning);
        QCOMPARE(redraws, 1);

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
