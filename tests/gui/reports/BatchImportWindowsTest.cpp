// The batch and import windows where widgets matter: a drop on the list, the main
// window after a run, and both windows on a 1024 x 768 screen (screenshots on request).
#include "gui/reports/BatchConverterWindow.h"
#include "gui/reports/ImportWindow.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

class BatchImportWindowsTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowOnHome> m;
    template <class T> T *widget(QWidget *window, const char *name) { return Child<T>(window, name); }

private slots:
    void init() { m = std::make_unique<WindowOnHome>(); }
    void cleanup() { m.reset(); }

    void dropAddsRowsUntilADuplicate() {
        auto *batch = new BatchConverterWindow(m->session, &m->window);
        batch->show();
        auto *list = widget<QTreeWidget>(batch, "ListView1");
        QVERIFY(!widget<QPushButton>(batch, "Command4")->isEnabled());
        const QString a = QString::fromStdString(m->home.file("Runtime/Libraries/Pose/Demo Skin Tones.pz2"));
        const QString b = QString::fromStdString(m->home.file("Runtime/Libraries/Pose/Demo Metal Suit.pz2"));
        DropFiles(list->viewport(), {a, b, a});

        QCOMPARE(list->topLevelItemCount(), 2);
        QCOMPARE(list->topLevelItem(1)->text(0), b);
        QCOMPARE(list->topLevelItem(1)->text(1), QString(kConvertIntoP5));
        QCOMPARE(m->ui.messages().size(), size_t(1));
        QCOMPARE(m->ui.messages()[0].Title, std::string("Duplicate file"));
        QVERIFY(widget<QPushButton>(batch, "Command4")->isEnabled());

        // An option puts its operation on the selected rows only.
        list->topLevelItem(0)->setSelected(true);
        widget<QRadioButton>(batch, "Option4")->click();
        QCOMPARE(list->topLevelItem(0)->text(1), QString(kCopyInP4));
        QCOMPARE(list->topLevelItem(1)->text(1), QString(kConvertIntoP5));
        QVERIFY(batch->sizeHint().width() <= 1024 && batch->height() <= 720);
        SaveScreenshot(batch, "batch-window");
    }

    void runLeavesTheMainWindowLockedAndTheBatchWindowOpen() {
        m->session.PoserFileKind = KindPZ2;
        const std::string pose = m->home.write("pose.pz2", test::ReadTestData("batch/skin-p4.pz2"));
        m->ui.nextFile(pose);
        widget<QAction>(&m->window, "mnuOpenPZ2")->trigger();
        QVERIFY(widget<QAction>(&m->window, "mnuSave")->isEnabled());

        auto *batch = new BatchConverterWindow(m->session, &m->window);
        connect(batch, &BatchConverterWindow::sessionChanged, &m->window, &MainWindow::refreshFromSession);
        batch->show();
        batch->DropFiles({pose});
        widget<QPushButton>(batch, "Command4")->click();

        QCOMPARE(m->ui.messages().back().Title, std::string("Job finished"));
        QCOMPARE(m->home.read("pose.pz2"), test::ReadTestData("writer/p5-skin/expected.pz2"));
        QVERIFY(batch->isVisible());
        QVERIFY(!widget<QAction>(&m->window, "mnuSave")->isEnabled());
        QVERIFY(!widget<QComboBox>(&m->window, "cmbFigures")->isEnabled());
        for (const char *name : {"chkChannels", "chkNoMaterialData"}) {
            auto *box = widget<QCheckBox>(&m->window, name);
            QVERIFY2(box->isChecked() && !box->isEnabled(), name);
        }
    }

    void importWindowShowsTheBodyOptionForCharacters() {
        ImportWindow window(&m->window);
        window.show();
        auto *body = widget<QCheckBox>(&window, "chkBody");
        QVERIFY(!body->isEnabled());
        widget<QRadioButton>(&window, "optDataType_1")->click();
        widget<QRadioButton>(&window, "optFileType_5")->click();
        QVERIFY(body->isEnabled());
        QVERIFY(window.sizeHint().width() <= 1024 && window.sizeHint().height() <= 720);
        SaveScreenshot(&window, "import-window");
    }
};

QTEST_MAIN(BatchImportWindowsTest)
#include "BatchImportWindowsTest.moc"
