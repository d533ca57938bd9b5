// The batch and import windows where widgets matter: a drop on the list, the main
// window after a run, and both windows on a 1024 x 768 screen (screenshots on request).
#include "gui/MainWindow.h"
#include "gui/reports/BatchConverterWindow.h"
#include "gui/reports/ImportWindow.h"

#include "core/maps/Thumbnails.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>

#include <memory>

using namespace gelvane;

class BatchImportWindowsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestHome> m_home;
    Settings m_settings;
    ThumbnailCache m_thumbnails;
    std::unique_ptr<test::ScriptedInteraction> m_ui;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<MainWindow> m_window;

    template <class T> T *widget(QWidget *window, const char *name) {
        T *found = window->findChild<T *>(name);
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }
    void keepScreenshot(QWidget *window, const char *name) {
        if (const QByteArray dir = qgetenv("GELVANE_SCREENSHOTS"); !dir.isEmpty())
            window->grab().save(QString("%1/%2.png").arg(QString(dir), name));
    }

private slots:
    void init() {
        m_home = std::make_unique<test::TestHome>();
        m_settings = Settings{};
        m_ui = std::make_unique<test::ScriptedInteraction>();
        m_ui->onFailure([](const std::string &fault) { QTest::qFail(fault.c_str(), __FILE__, __LINE__); });
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

    void dropAddsRowsUntilADuplicate() {
        auto *batch = new BatchConverterWindow(*m_session, m_window.get());
        batch->show();
        auto *list = widget<QTreeWidget>(batch, "ListView1");
        QVERIFY(!widget<QPushButton>(batch, "Command4")->isEnabled());
        const QString a = QString::fromStdString(m_home->file("Runtime/Libraries/Pose/Demo Skin Tones.pz2"));
        const QString b = QString::fromStdString(m_home->file("Runtime/Libraries/Pose/Demo Metal Suit.pz2"));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(a), QUrl::fromLocalFile(b), QUrl::fromLocalFile(a)});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list->viewport(), &drop);

        QCOMPARE(list->topLevelItemCount(), 2);
        QCOMPARE(list->topLevelItem(1)->text(0), b);
        QCOMPARE(list->topLevelItem(1)->text(1), QString(kConvertIntoP5));
        QCOMPARE(m_ui->messages().size(), size_t(1));
        QCOMPARE(m_ui->messages()[0].Title, std::string("Duplicate file"));
        QVERIFY(widget<QPushButton>(batch, "Command4")->isEnabled());

        // An option puts its operation on the selected rows only.
        list->topLevelItem(0)->setSelected(true);
        widget<QRadioButton>(batch, "Option4")->click();
        QCOMPARE(list->topLevelItem(0)->text(1), QString(kCopyInP4));
        QCOMPARE(list->topLevelItem(1)->text(1), QString(kConvertIntoP5));
        QVERIFY(batch->sizeHint().width() <= 1024 && batch->height() <= 720);
        keepScreenshot(batch, "batch-window");
    }

    void runLeavesTheMainWindowLockedAndTheBatchWindowOpen() {
        m_session->PoserFileKind = KindPZ2;
        const std::string pose = m_home->write("pose.pz2", test::ReadTestData("batch/skin-p4.pz2"));
        m_ui->nextFile(pose);
        widget<QAction>(m_window.get(), "mnuOpenPZ2")->trigger();
        QVERIFY(widget<QAction>(m_window.get(), "mnuSave")->isEnabled());

        auto *batch = new BatchConverterWindow(*m_session, m_window.get());
        connect(batch, &BatchConverterWindow::sessionChanged, m_window.get(), &MainWindow::refreshFromSession);
        batch->show();
        batch->DropFiles({pose});
        widget<QPushButton>(batch, "Command4")->click();

        QCOMPARE(m_ui->messages().back().Title, std::string("Job finished"));
        QCOMPARE(m_home->read("pose.pz2"), test::ReadTestData("writer/p5-skin/expected.pz2"));
        QVERIFY(batch->isVisible());
        QVERIFY(!widget<QAction>(m_window.get(), "mnuSave")->isEnabled());
        QVERIFY(!widget<QComboBox>(m_window.get(), "cmbFigures")->isEnabled());
        for (const char *name : {"chkChannels", "chkNoMaterialData"}) {
            auto *box = widget<QCheckBox>(m_window.get(), name);
            QVERIFY2(box->isChecked() && !box->isEnabled(), name);
        }
    }

    void importWindowShowsTheBodyOptionForCharacters() {
        ImportWindow window(m_window.get());
        window.show();
        auto *body = widget<QCheckBox>(&window, "chkBody");
        QVERIFY(!body->isEnabled());
        widget<QRadioButton>(&window, "optDataType_1")->click();
        widget<QRadioButton>(&window, "optFileType_5")->click();
        QVERIFY(body->isEnabled());
        QVERIFY(window.sizeHint().width() <= 1024 && window.sizeHint().height() <= 720);
        keepScreenshot(&window, "import-window");
    }
};

QTEST_MAIN(BatchImportWindowsTest)
#include "BatchImportWindowsTest.moc"
