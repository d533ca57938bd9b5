#pragma once
// What the window tests share: a scripted user that fails the running Qt test, a main
// window on a temporary home, the rows of lists, pictures on disk, drops, and a way to act
// on a modal dialog.
#include "core/maps/Thumbnails.h"
#include "gui/MainWindow.h"
#include "support/SessionFixture.h"

#include <QtTest>
#include <QtWidgets>

#include <filesystem>
#include <functional>

namespace gelvane::test {

struct QtScript : ScriptedInteraction {
    QtScript() {
        onFailure([](const std::string &fault) { QTest::qFail(fault.c_str(), __FILE__, __LINE__); });
    }
};

// A main window started on a temporary home; torn down without the closing question.
struct WindowOnHome {
    explicit WindowOnHome(const std::function<void(Settings &)> &set = {}) {
        if (set)
            set(settings);
        window.StartUp("");
        window.show();
    }
    ~WindowOnHome() { session.FileModified = false; }

    TestHome home;
    Settings settings;
    QtScript ui;
    Session session{settings, ui};
    ThumbnailCache thumbnails;
    MainWindow window{session, settings, thumbnails};
};

// The child of `parent` named `name`; a missing one ends the test program.
template <class T> T *Child(const QObject *parent, const char *name) {
    T *found = parent->findChild<T *>(name);
    if (!found)
        qFatal("no widget %s", name);
    return found;
}

// Drags `paths` onto `target` and drops them there.
inline void DropFiles(QWidget *target, const QStringList &paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
}

// The look of a window for the documentation, when GELVANE_SCREENSHOTS names a folder.
inline void SaveScreenshot(QWidget *window, const QString &name) {
    if (const QByteArray dir = qgetenv("GELVANE_SCREENSHOTS"); !dir.isEmpty())
        QVERIFY(window->grab().save(QString("%1/%2.png").arg(QString(dir), name)));
}

inline QStringList Rows(const QComboBox *box) {
    QStringList rows;
    for (int i = 0; i < box->count(); ++i)
        rows << box->itemText(i);
    return rows;
}

inline QStringList Rows(const QListWidget *list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i)
        rows << list->item(i)->text();
    return rows;
}

inline QStringList Rows(const QTreeWidget *list, int column) {
    QStringList rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        rows << list->topLevelItem(i)->text(column);
    return rows;
}

inline std::string WritePng(const std::string &path, int w, int h, QColor color) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(color);
    image.save(QString::fromStdString(path));
    return path;
}

inline QColor Centre(const QLabel *label) {
    const QImage image = label->pixmap().toImage();
    return image.pixel(image.width() / 2, image.height() / 2);
}

// Runs `work` on the modal dialog that the next call brings up, once it is there.
template <class Dialog> void WhenModal(std::function<void(Dialog *)> work) {
    QTimer::singleShot(0, [work] {
        QTRY_VERIFY(qobject_cast<Dialog *>(QApplication::activeModalWidget()) != nullptr);
        work(qobject_cast<Dialog *>(QApplication::activeModalWidget()));
    });
}

} // namespace gelvane::test
