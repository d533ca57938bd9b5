#include "gui/app/SettingsWindow.h"

#include "core/app/SettingsFile.h"
#include "support/QtSupport.h"

using namespace gelvane;
using namespace gelvane::test;

class SettingsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void cancelStoresNothingAndOkWritesTheFile();
};

void SettingsWindowTest::cancelStoresNothingAndOkWritesTheFile() {
    TestHome home;
    QtScript ui;
    home.write("Poser/Runtime/Libraries/Pose/x", "");
    Settings settings = LoadSettings(ui);
    const std::string before = home.read("Settings.ini");
    Session session(settings, ui);
    std::vector<std::string> associated;
    const AssociationCalls calls{[](const std::string &ext) { return ext == ".hr2"; },
                                 [&](const std::string &ext, bool) { associated.push_back(ext); }, [] {}};
    {
        SettingsWindow window(settings, session, nullptr, calls);
        window.findChild<QLineEdit *>("TXT_6")->setText(QString::fromStdString(home.file("Poser")));
        window.findChild<QCheckBox *>("chkAs_3")->setChecked(false);
        QTest::mouseClick(window.findChild<QPushButton *>("cmdCancel"), Qt::LeftButton);
        QCOMPARE(window.result(), int(QDialog::Rejected));
    }
    QCOMPARE(home.read("Settings.ini"), before);
    QCOMPARE(settings.PoserFolder, std::string("none"));
    QVERIFY(associated.empty());

    SettingsWindow window(settings, session, nullptr, calls);
    auto *tabs = window.tabs();
    QCOMPARE(tabs->count(), 3);
    QVERIFY(window.findChild<QCheckBox *>("chkAs_3")->isChecked());
    auto *autoCorrect = window.findChild<QCheckBox *>("chkAutoCorrect");
    autoCorrect->setChecked(false);
    QVERIFY(!window.findChild<QCheckBox *>("chkNOMAP")->isEnabled());
    window.findChild<QCheckBox *>("chkP5Version")->setChecked(false);
    QVERIFY(!window.findChild<QLineEdit *>("txtP5Version")->isEnabled());
    window.findChild<QLineEdit *>("TXT_6")->setText(QString::fromStdString(home.file("Poser")));
    // Every tab fits a 1024 x 768 screen; the screenshots are kept when asked for.
    window.show();
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        QVERIFY(window.sizeHint().width() <= 1024 && window.sizeHint().height() <= 720);
        SaveScreenshot(&window, "preferences-" + QStringList{"folders", "associations", "general"}[i]);
    }
    window.findChild<QCheckBox *>("chkAs_2")->setChecked(true);
    QTest::mouseClick(window.findChild<QPushButton *>("cmdOK"), Qt::LeftButton);
    QCOMPARE(window.result(), int(QDialog::Accepted));
    QCOMPARE(settings.PoserFolder, home.file("Poser"));
    QVERIFY(!settings.AutoCorrect && session.View.mnuPoserEnabled);
    QCOMPARE(associated, std::vector<std::string>{".pp2"});
    const std::string ini = home.read("Settings.ini");
    QVERIFY(ini.find("Poser=" + home.file("Poser") + "\r\n") != std::string::npos);
    QVERIFY(ini.find("AutoCorrect=False\r\n") != std::string::npos);
    QVERIFY(ini.find("SetP5Version=False\r\n") != std::string::npos);
}

QTEST_MAIN(SettingsWindowTest)
#include "SettingsWindowTest.moc"
