#pragma once
// frmAbout: the program's title, version and the picture decoding it relies on.
#include <QDialog>

namespace gelvane {

class AboutWindow : public QDialog {
    Q_OBJECT
public:
    explicit AboutWindow(QWidget *parent);
};

} // namespace gelvane
