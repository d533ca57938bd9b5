#pragma once
// What the window tests share: a scripted user that fails the running Qt test, the rows of
// lists, pictures on disk and a way to act on a modal dialog.
#include "core/maps/Thumbnails.h"
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
