#include "gui/maps/ChoosePicWindow.h"

#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

class ChoosePicWindowTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::vector<MapCandidate> m_candidates;
    QtScript m_ui;
    ThumbnailCache m_thumbnails;

    // Runs `act` on the choice window once it is shown; the window decodes pictures before it waits.
    template <class Act> static void WhenShown(Act act) {
        auto *timer = new QTimer;
        QObject::connect(timer, &QTimer::timeout, [timer, act] {
            for (QWidget *widget : QApplication::topLevelWidgets())
                if (widget->objectName() == "frmChoosePic" && widget->isVisible()) {
                    timer->stop();
                    timer->deleteLater();
                    act(widget);
                    return;
                }
        });
        timer->start(10);
    }

private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        WritePng(m_dir.filePath("One/skin.png").toStdString(), 40, 20, Qt::red);
        QDir(m_dir.path()).mkpath("Two");
        QFile broken(m_dir.filePath("Two/skin.png"));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("not a picture") > 0);
        broken.close();
        m_candidates = {{m_dir.filePath("One/skin.png").toStdString()}, {m_dir.filePath("Two/SKIN.PNG").toStdString()}};
    }

    void rowsThumbnailAndInformation() {
        ChoosePicWindow window(nullptr, m_ui, m_thumbnails, "skin.png", m_candidates);
        auto *rows = window.findChild<QComboBox *>("cmbMaps");
        auto *info = window.findChild<QPlainTextEdit *>("txtMapInfo");
        auto *thumb = window.findChild<QLabel *>("imgMapThumb");
        auto *toggle = window.findChild<QCheckBox *>("chkThumbNail");
        QVERIFY(rows && info && thumb && toggle);
        QCOMPARE(Rows(rows), QStringList({"skin.png 1", "skin.png 2", "NO_MAP"}));
        QVERIFY(info->toPlainText().contains("Dimensions: 40 X 20 pixels"));
        QVERIFY(info->toPlainText().startsWith("File Path: " + m_dir.filePath("One")));
        QVERIFY(info->toPlainText().contains("Size: 0 MB"));
        // A file that can't be decoded shows only where it is; the spelling is the disk's.
        rows->setCurrentIndex(1);
        QCOMPARE(info->toPlainText(), "File Path: " + m_dir.filePath("Two"));
        QVERIFY(window.findChild<QPushButton *>("cmdOK")->isEnabled());
        toggle->setChecked(false);
        QVERIFY(!thumb->isEnabled() && thumb->pixmap().isNull());
        toggle->setChecked(true);
        QVERIFY(thumb->isEnabled() && !thumb->pixmap().isNull());
    }

    void choiceComesBackAsCandidateIndex() {
        WhenShown([](QWidget *window) {
            window->findChild<QComboBox *>("cmbMaps")->setCurrentIndex(1);
            window->findChild<QPushButton *>("cmdOK")->click();
        });
        QCOMPARE(ChoosePic(nullptr, m_ui, m_thumbnails, "skin.png", m_candidates), 1);

        WhenShown([](QWidget *window) {
            window->findChild<QComboBox *>("cmbMaps")->setCurrentIndex(2);
            window->close();
        });
        QCOMPARE(ChoosePic(nullptr, m_ui, m_thumbnails, "skin.png", m_candidates), -1);
        // The window's pictures go when it closes.
        QVERIFY(m_thumbnails.Keys(1).empty());
    }

    void failureOfARowIsReportedThroughTheInteraction() {
        ThumbnailCache failing;
        failing.DoEvents = [] { Fail(ErrOutOfMemory); }; // while the picture loads
        ChoosePicWindow window(nullptr, m_ui, failing, "skin.png", m_candidates);
        QCOMPARE(m_ui.messages(), std::vector<RecordedMessage>(
                                      {{"Error in the cmbMaps sub\r\nOut of memory, error number 7\r\nCode line "
                                        "number 2",
                                        "Gelvane", MsgIcon::Exclamation, MsgButtons::OK}}));
        QVERIFY(window.findChild<QPushButton *>("cmdOK")->isEnabled());
    }
};

QTEST_MAIN(ChoosePicWindowTest)
#include "ChoosePicWindowTest.moc"
