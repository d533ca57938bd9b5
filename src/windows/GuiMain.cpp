#include "windows/GuiMain.h"

#include <QApplication>
#include <QMainWindow>

namespace gelvane {

int RunGui(int argc, char **argv, const std::string &) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle("Gelvane");
    window.show();
    return app.exec();
}

} // namespace gelvane
