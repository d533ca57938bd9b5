// The report entries of the main window driven as a user would: File Information
// with its window and its HTML button, and the material library export.
#include "gui/MainWindow.h"
#include "gui/reports/FileInfoWindow.h"

#include "core/maps/Thumbnails.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Paths.h"
#include "core/reports/HtmlReport.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace gelvane;

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
    std::unique_ptr<test::TestHome> m_home;
    Settings m_settings;
    ThumbnailCache m_thumbnails;
    std::unique_ptr<test::ScriptedInteraction> m_ui;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<MainWindow> m_window;

    QAction *entry(const char *name) { return m_window->findChild<QAction *>(name); }

private slots:
    void init() {
        m_home = std::make_unique<test::TestHome>();
        m_settings = Settings{};
        m_settings.AutoCorrect = false;
        m_settings.PoserFolder = std::string(GELVANE_TEST_DATA) + "/report/with-maps";
        m_ui = std::make_unique<test::ScriptedInteraction>();
        m_ui->onFailure([](const std::string &fault) { QTest::qFail(fault.c_str(), __FILE__, __LINE__); });
        m_session = std::make_unique<Session>(m_settings, *m_ui);
        m_window = std::make_unique<MainWindow>(*m_session, m_settings, m_thumbnails);
        m_window->StartUp("");
        m_window->show();
        QVERIFY(!entry("mnuFileInfo")->isEnabled());
        m_ui->nextFile(kSkinTones);
        entry("mnuOpenPZ2")->trigger();
        QVERIFY(entry("mnuFileInfo")->isEnabled());
    }

    void cleanup() {
        m_session->FileModified = false;
        m_window.reset();
        m_session.reset();
        m_ui.reset();
        m_home.reset();
    }

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
        QCOMPARE(m_session->FileComment, std::string("first line\r\nsecond line"));
        QVERIFY(!m_session->FileModified);

        // Closed any other way, the window keeps the comment.
        WhenShown([](FileInfoWindow *window) {
            window->findChild<QPlainTextEdit *>("txtNotes")->setPlainText("dropped");
            window->reject();
        });
        entry("mnuFileInfo")->trigger();
        QCOMPARE(m_session->FileComment, std::string("first line\r\nsecond line"));
    }

    void htmlButtonWritesWhatTheCoreWrites() {
        const std::string page = m_home->file("Skin.htm");
        m_ui->nextFile(page);
        WhenShown([](FileInfoWindow *window) {
            window->findChild<QPushButton *>("cmdCreateHTML")->click();
            window->accept();
        });
        entry("mnuFileInfo")->trigger();
        QVERIFY(m_ui->messages().empty());
        ThumbnailCache thumbnails;
        WriteHtmlReport(*m_session, thumbnails, m_home->file("Direct.htm"));
        QCOMPARE(ReadFileBytes(page),
                 Replace(ReadFileBytes(m_home->file("Direct.htm")), "Direct_Images", "Skin_Images"));
        QVERIFY(FileExists(m_home->file("Skin_Images/tex 1.jpg")));
    }

    void windowFitsTheSmallestScreen() {
        FileInfoWindow window(*m_session, m_thumbnails);
        window.show();
        QVERIFY(window.frameGeometry().width() <= 1024 && window.frameGeometry().height() <= 768);
        // The look of the tabs, for the documentation, when asked for.
        const QByteArray folder = qgetenv("GELVANE_SCREENSHOTS");
        auto *tabs = window.findChild<QTabWidget *>("TabStrip1");
        for (int i = 0; i < tabs->count() && !folder.isEmpty(); ++i) {
            tabs->setCurrentIndex(i);
            QVERIFY(window.grab().save(QString("%1/file-information-%2.png").arg(folder).arg(i + 1)));
        }
    }

    void materialLibraryKeepsDosLineEndsUnderBothOptions() {
        const std::string expected = "newmtl Eyes\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd eyes.jpg\r\n"
                                     "newmtl Skin\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd skin.png\r\n"
                                     "map_Bump skin_bump.bmp\r\n"
                                     "newmtl Lips\r\nNs 40\r\nKa 0 0 0\r\nKd 1 1 1\r\nKs 0 0 0\r\nmap_Kd skin.png\r\n";
        for (const char *option : {"optFileSystem_1", "optFileSystem_0"}) {
            m_window->findChild<QRadioButton *>(option)->click();
            const std::string target = m_home->file(std::string(option) + ".mtl");
            m_ui->nextFile(target);
            entry("mnuExportMTL")->trigger();
            QCOMPARE(ReadFileBytes(target), expected);
            QCOMPARE(m_session->OutputPath, m_session->FileName);
        }
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
