// What the window shows while and after a file opens, how it fits a screen, and what
// its menus offer: defects found by using the program as a new user would.
#include "core/platform/Paths.h"
#include "gui/AboutWindow.h"
#include "gui/AppIcon.h"
#include "gui/FileDialogs.h"
#include "gui/PleaseWaitWindow.h"
#include "gui/QtInteraction.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

std::string DemoText() {
    return test::ReadTestData("gui/demo.pz2");
}

// True when what the window system holds of `widget`'s window shows `widget` as it draws
// itself now: the window has painted it since its last change.
bool Drawn(QWidget *widget) {
    QWidget *window = widget->window();
    const QPixmap held = window->screen()->grabWindow(window->winId());
    if (held.isNull())
        return false;
    const QRect where(widget->mapTo(window, QPoint(0, 0)), widget->size());
    const QImage now = window->grab().toImage().convertToFormat(QImage::Format_RGB32).copy(where);
    return held.toImage().convertToFormat(QImage::Format_RGB32).copy(where) == now;
}

// Runs `act` on the first visible top-level widget named `name` once it shows.
void WhenShown(const QString &name, std::function<void(QWidget *)> act) {
    auto *timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, name, act] {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget->objectName() == name && widget->isVisible()) {
                timer->stop();
                timer->deleteLater();
                act(widget);
                return;
            }
    });
    timer->start(5);
}

// The window's own interaction, with notices answered at once; it checks, each time the
// progress window changes, that the change was painted before the work went on.
class CheckingInteraction : public QtInteraction {
public:
    using QtInteraction::QtInteraction;
    MsgResult MessageBox(const std::string &, const std::string &, MsgIcon, MsgButtons buttons) override {
        return buttons == MsgButtons::OK ? MsgResult::OK : MsgResult::No;
    }
    void ProgressShow(const std::string &title, const std::string &status, int barMax) override {
        QtInteraction::ProgressShow(title, status, barMax);
        check("lblPleaseWait");
    }
    void ProgressStatus(const std::string &status) override {
        QtInteraction::ProgressStatus(status);
        check("lblPleaseWait");
    }
    void ProgressDetail(const std::string &detail) override {
        QtInteraction::ProgressDetail(detail);
        check("lblFigure");
    }
    void ProgressValue(int value) override {
        QtInteraction::ProgressValue(value);
        check("ProgressBar1");
    }
    int Checked = 0;
    QStringList Undrawn;

private:
    void check(const char *name) {
        if (QWidget *shown = progressWindow() ? progressWindow()->findChild<QWidget *>(name) : nullptr) {
            ++Checked;
            if (!Drawn(shown))
                Undrawn << QString(name) + " " + shown->property("text").toString();
        }
    }
};

// The main window on a temporary home over the program's own interaction, wired as the
// program wires it; the settings are set before it starts.
struct CheckedWindow {
    explicit CheckedWindow(const std::function<void(Settings &, const TestHome &)> &set = {}) {
        settings.AutoCorrect = false;
        if (set)
            set(settings, home);
        window.UseInteraction(ui);
        window.StartUp("");
        window.show();
    }
    ~CheckedWindow() { session.FileModified = false; }

    TestHome home;
    Settings settings;
    ThumbnailCache thumbnails;
    CheckingInteraction ui{thumbnails};
    Session session{settings, ui};
    MainWindow window{session, settings, thumbnails};
};

void NoAutoCorrect(Settings &settings) {
    settings.AutoCorrect = false;
}

} // namespace

class WindowDefectsTest : public QObject {
    Q_OBJECT

private slots:
    void progressWindowPaintsEachChangeDuringALoad() {
        std::string text = "{\n\nversion\n\t{\n\tnumber 4.01\n\t}\n";
        for (int a = 0; a < 300; ++a) {
            text += "actor a" + std::to_string(a) + "\n\t{\n\tchannels\n\t\t{\n";
            for (int c = 0; c < 20; ++c)
                text += "\t\ttargetGeom m" + std::to_string(c) +
                        "\n\t\t\t{\n\t\t\tkeys\n\t\t\t\t{\n\t\t\t\tstatic  0\n\t\t\t\tk  0  0.5\n\t\t\t\t}\n\t\t\t}\n";
            text += "\t\t}\n\t}\n";
        }
        text += DemoText().substr(DemoText().find("figure\n"));
        CheckedWindow p;
        p.window.DropFile(p.home.write("long.pz2", text));
        QCOMPARE(p.session.Actors.size(), size_t(300));
        QVERIFY(p.ui.Checked >= 2);
        QVERIFY2(p.ui.Undrawn.isEmpty(), qPrintable(p.ui.Undrawn.join(", ")));
    }

    void questionsOfAnOpenComeOverTheOpenedFile_data() {
        QTest::addColumn<QString>("reference");
        QTest::addColumn<QString>("question");
        QTest::newRow("folder chooser") << "D:\\Elsewhere\\skin.jpg"
                                        << "BrowseForFolder";
        QTest::newRow("map choice") << ":Runtime:textures:skin.jpg"
                                    << "frmChoosePic";
    }

    void questionsOfAnOpenComeOverTheOpenedFile() {
        QFETCH(QString, reference);
        QFETCH(QString, question);
        CheckedWindow p([](Settings &settings, const TestHome &home) {
            settings.AutoCorrect = true;
            settings.PoserFolder = home.path();
        });
        for (const char *folder : {"One", "Two"})
            WritePng(p.home.file(std::string("Runtime/Textures/") + folder + "/skin.jpg"), 8, 8, Qt::gray);
        std::string pose = DemoText();
        pose.replace(pose.find("textureMap NO_MAP"), 17, "textureMap " + reference.toStdString());

        QString title;
        QStringList rows;
        bool drawn = false;
        WhenShown(question, [&](QWidget *asking) {
            title = p.window.windowTitle();
            auto *list = Child<QListWidget>(&p.window, "lstMaterials");
            rows = Rows(list);
            drawn = Drawn(list);
            asking->close();
        });
        p.window.DropFile(p.home.write("mapped.pz2", pose));
        QCOMPARE(title, QString("Gelvane - [mapped.pz2]"));
        QCOMPARE(rows, QStringList({"Skin", "Eyes"}));
        QVERIFY(drawn);
    }

    void windowFitsASmallScreenAndGrowsOnALargeOne() {
        WindowOnHome p(NoAutoCorrect);
        p.window.DropFile(p.home.write("demo.pz2", DemoText()));
        // Room for a frame of a few pixels, the title bar and a panel of the desktop.
        const QSize minimum = p.window.minimumSizeHint();
        QVERIFY2(minimum.width() <= 1024 - 12, qPrintable(QString::number(minimum.width())));
        QVERIFY2(minimum.height() <= 768 - 70, qPrintable(QString::number(minimum.height())));
        QVERIFY(p.window.width() <= 1024 - 12 && p.window.height() <= 768 - 70);
        auto *tabs = Child<QTabWidget>(&p.window, "tbsOptions");
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            QWidget *page = tabs->widget(i);
            QVERIFY2(page->minimumSizeHint().width() <= page->width() &&
                         page->minimumSizeHint().height() <= page->height(),
                     qPrintable(page->objectName()));
        }

        tabs->setCurrentIndex(0);
        auto *materials = Child<QListWidget>(&p.window, "lstMaterials");
        auto *map = Child<QLineEdit>(&p.window, "TXT_8");
        auto *bar = Child<QScrollBar>(&p.window, "SCR_0");
        auto *actors = Child<QTreeWidget>(&p.window, "lstActors");
        const int smallList = materials->height(), smallMap = map->width(), smallActors = actors->width();
        p.window.resize(1920 - 12, 1080 - 70);
        QApplication::processEvents();
        QVERIFY(materials->height() > smallList);
        QVERIFY(map->width() > smallMap + 300);
        QVERIFY2(bar->width() <= 240, qPrintable(QString::number(bar->width())));
        tabs->setCurrentIndex(1);
        QVERIFY(actors->width() > smallActors + 200);
    }

    void fileDialogsShowTheirColumns() {
        QSize size;
        int nameColumn = 0;
        WhenShown("CdlgEx", [&](QWidget *dialog) {
            size = dialog->size();
            nameColumn = dialog->findChild<QTreeView *>("treeView")->header()->sectionSize(0);
            dialog->close();
        });
        FileDialogRequest request;
        request.Title = "Open Pose file";
        request.Filter = "Pose files (*.pz2)|*.pz2";
        ThumbnailCache thumbnails;
        QVERIFY(!ShowFileDialog(nullptr, request, thumbnails));
        QVERIFY2(size.width() >= 760 && size.height() >= 480,
                 qPrintable(QString("%1x%2").arg(size.width()).arg(size.height())));
        QVERIFY(size.width() <= 1024 && size.height() <= 768);
        QVERIFY(nameColumn >= 280);
    }

    void programIconInTitleBarsAndAbout() {
        const QImage icon = AppIcon().pixmap(48, 48).toImage();
        QVERIFY(!icon.isNull());
        WindowOnHome p(NoAutoCorrect);
        QCOMPARE(p.window.windowIcon().pixmap(48, 48).toImage(), icon);
        AboutWindow about(&p.window);
        QCOMPARE(about.findChild<QLabel *>("picIcon")->pixmap().toImage(), icon);
    }

    void helpOpensTheDocumentsThatShipWithTheProgram() {
        WindowOnHome p(NoAutoCorrect);
        std::vector<std::string> opened;
        p.window.setDocumentStarter([&](const std::vector<std::string> &argv, int *) {
            opened.push_back(argv.back());
            return true;
        });
        for (const char *name : {"mnuReadme", "mnuVHistory", "mnuWebSite"})
            Child<QAction>(&p.window, name)->trigger();
        QCOMPARE(opened.size(), size_t(3));
        const char *names[3] = {"GVLLicense.txt", "VHistory.htm", "Manual.htm"};
        for (size_t i = 0; i < 3; ++i) {
            QVERIFY2(FileExists(opened[i]), opened[i].c_str());
            QCOMPARE(QString::fromStdString(std::string(FileNamePart(opened[i]))), QString(names[i]));
        }
    }

    void everyWindowThatExistsHasItsEntry() {
        WindowOnHome p(NoAutoCorrect);
        for (const char *name : {"mnuSelSets", "mnuImport", "mnuBatchConvert", "mnuPreferences"})
            QVERIFY2(Child<QAction>(&p.window, name)->isEnabled(), name);
        p.window.DropFile(p.home.write("demo.pz2", DemoText()));
        for (const char *name : {"mnuFileInfo", "mnuExportMTL", "mnuSave", "mnuSaveAs"})
            QVERIFY2(Child<QAction>(&p.window, name)->isEnabled(), name);
    }
};

QTEST_MAIN(WindowDefectsTest)
#include "WindowDefectsTest.moc"
