#include "gui/maps/ChoosePicWindow.h"

#include "core/maps/Thumbnails.h"
#include "core/platform/Failure.h"
#include "support/ScriptedInteraction.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace gelvane;

class ChoosePicWindowTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::vector<MapCandidate> m_candidates;
    test::ScriptedInteraction m_ui;
    ThumbnailCache m_thumbnails;

    // Runs `act` on the choice window as soon as it is shown.
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
        m_ui.onFailure([](const std::string &fault) { QTest::qFail(fault.c_str(), __FILE__, __LINE__); });
        QVERIFY(m_dir.isValid());
        QImage wide(40, 20, QImage::Format_RGB32);
        wide.fill(Qt::red);
        QVERIFY(QDir(m_dir.path()).mkpath("One"));
        QVERIFY(wide.save(m_dir.filePath("One/skin.png")));
        QVERIFY(QDir(m_dir.path()).mkpath("Two"));
        QFile broken(m_dir.filePath("Two/skin.png"));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("not a picture");
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
        QCOMPARE(rows->count(), 3);
        QCOMPARE(rows->itemText(0), QString("skin.png 1"));
        QCOMPARE(rows->itemText(1), QString("skin.png 2"));
        QCOMPARE(rows->itemText(2), QString("NO_MAP"));
        QVERIFY(info->toPlainText().contains("Dimensions: 40 X 20 pixels"));
        QVERIFY(info->toPlainText().startsWith("File Path: " + m_dir.filePath("One")));
        QVERIFY(info->toPlainText().contains("Size: 0 MB"));
        // A file that can't be decoded shows only where it is; the spelling is the disk's.
        rows->setCurrentIndex(1);
        QCOMPARE(info->toPlainText(), "File Path: " + m_dir.filePath("Two"));
        QVERIFY(window.findChild<QPushButton *>("cmdOK")->isEnabled());
        toggle->setChecked(false);
        QVERIFY(!thumb->isEnabled());
        QVERIFY(thumb->pixmap().isNull());
        toggle->setChecked(true);
        QVERIFY(thumb->isEnabled());
        QVERIFY(!thumb->pixmap().isNull());
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
        QCOMPARE(m_ui.messages().size(), size_t(1));
        QCOMPARE(m_ui.messages()[0].Text,
                 std::string("Error in the cmbMaps sub\r\nOut of memory, error number 7\r\nCode line number 2"));
        QCOMPARE(m_ui.messages()[0].Icon, MsgIcon::Exclamation);
        QVERIFY(window.findChild<QPushButton *>("cmdOK")->isEnabled());
    }
};

QTEST_MAIN(ChoosePicWindowTest)
#include "ChoosePicWindowTest.moc"
