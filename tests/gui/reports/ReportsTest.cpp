// The report entries of the main window driven as a user would: File Information
// with its window and its HTML button, and the material library export.
#include "gui/reports/FileInfoWindow.h"

#include "core/model/Text.h"
#include "core/platform/Paths.h"
#include "core/reports/HtmlReport.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

const std::string kSkinTones = std::string(GELVANE_TEST_DATA) + "/report/with-maps/Skin Tones.pz2";

QString Text(QWidget *window, const char *label) {
    auto *found = window->findChild<QLabel *>(label);
    return found ? found->text() : QString("no label %1").arg(label);
}

// Runs `act` on frmFileInfo as soon as the menu entry has shown it.
void WhenShown(std::function<void(FileInfoWindow *)> act) {
    auto *timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
        if (auto *window = qobject_cast<FileInfoWindow *>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(window);
            if (window->isVisible()) // a failed check must not leave the modal window waiting
                window->reject();
        }
    });
    timer->start(10);
}

} // namespace

class ReportsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowOnHome> m;
    QAction *entry(const char *name) { return Child<QAction>(&m->window, name); }

private slots:
    void init() {
        m = std::make_unique<WindowOnHome>([](Settings &settings) {
            settings.AutoCorrect = false;
            settings.PoserFolder = std::string(GELVANE_TEST_DATA) + "/report/with-maps";
        });
        QVERIFY(!entry("mnuFileInfo")->isEnabled());
        m->ui.nextFile(kSkinTones);
        entry("mnuOpenPZ2")->trigger();
        QVERIFY(entry("mnuFileInfo")->isEnabled());
    }
    void cleanup() { m.reset(); }

    void windowShowsTheCountsAndOkStoresTheNotes() {
        bool checked = false;
        WhenShown([&](FileInfoWindow *window) {
            QCOMPARE(Text(window, "lblFileName"), QString("Skin Tones.pz2"));
            QCOMPARE(Text(window, "lblMaterials"), QString("3"));
            QCOMPARE(window->findChild<QComboBox *>("cmbActors")->currentText(), QString("hip:1"));
            QCOMPARE(Text(window, "lblPoseA"), QString("1"));
            auto *notes = window->findChild<QPlainTextEdit *>("txtNotes");
            QCOMPARE(notes->toPlainText(), QString("Skin tones for the report test"));
            notes->setPlainText("first line\nsecond line");
            window->findChild<QPushButton *>("cmdOK")->click();
            checked = true;
        });
        entry("mnuFileInfo")->trigger();
        QVERIFY(checked);
        QCOMPARE(m->session.FileComment, std::string("first line\r\nsecond line"));
        QVERIFY(!m->session.FileModified);

        // Closed any other way, the window keeps the comment.
        WhenShown([](FileInfoWindow *window) {
            window->findChild<QPlainTextEdit *>("txtNotes")->setPlainText("dropped");
            window->reject();
        });
        entry("mnuFileInfo")->trigger();
        QCOMPARE(m->session.FileComment, std::string("first line\r\nsecond line"));
    }

    void htmlButtonWritesWhatTheCoreWrites() {
        const std::string page = m->home.file("Skin.htm");
        m->ui.nextFile(page);
        WhenShown([](FileInfoWindow *window) {
            window->findChild<QPushButton *>("cmdCreateHTML")->click();
            window->accept();
        });
        entry("mnuFileInfo")->trigger();
        QVERIFY(m->ui.messages().empty());
        ThumbnailCache thumbnails;
        WriteHtmlReport(m->session, thumbnails, m->home.file("Direct.htm"));
        QCOMPARE(ReadFileBytes(page),
                 Replace(ReadFileBytes(m->home.file("Direct.htm")), "Direct_Images", "Skin_Images"));
        QVERIFY(FileExists(m->home.file("Skin_Images/tex 1.jpg")));
    }

    void windowFitsTheSmallestScreen() {
        FileInfoWindow window(m->session, m->thumbnails);
        window.show();
        QVERIFY(window.frameGeometry().width() <= 1024 && window.frameGeometry().height() <= 768);
        // The look of the tabs, for the documentation.
        auto *tabs = window.findChild<QTabWidget *>("TabStrip1");
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            SaveScreenshot(&window, QString("file-information-%1").arg(i + 1));
        }
    }

    void materialLibraryKeepsDosLineEndsUnderBothOptions() {
        const std::string expected = "newmtl Eyes\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd eyes.jpg\r\n"
                                     "newmtl Skin\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd skin.png\r\n"
                                     "map_Bump skin_bump.bmp\r\n"
                                     "newmtl Lips\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd skin.png\r\n";
        for (const char *option : {"optFileSystem_1", "optFileSystem_0"}) {
            m->window.findChild<QRadioButton *>(option)->click();
            const std::string target = m->home.file(std::string(option) + ".mtl");
            m->ui.nextFile(target);
            entry("mnuExportMTL")->trigger();
            QCOMPARE(ReadFileBytes(target), expected);
            QCOMPARE(m->session.OutputPath, m->session.FileName);
        }
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
