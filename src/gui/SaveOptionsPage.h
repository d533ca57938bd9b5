#pragma once
// picOptions(2), the save options: file system, Poser format, the required
// version and the two "don't save" boxes. Shows and edits session.Options.
#include <QWidget>

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace gelvane {

class Session;

class SaveOptionsPage : public QWidget {
    Q_OBJECT
public:
    SaveOptionsPage(Session &session, QWidget *parent);
    // Shows the session's options; the change handlers stay quiet meanwhile.
    void refresh();

signals:
    // A save box changed what the other pages may show: the window redraws them.
    void sessionChanged();

private:
    void onFileSystem();
    void onPoserFormat();
    void onVersionEdited(const QString &text);
    void onNoMaterialData(bool checked);
    void onChannels(bool checked);

    Session &m_session;
    QRadioButton *m_optFileSystem[2];
    QRadioButton *m_optPoserFormat[2];
    QLineEdit *m_TXT0;
    QCheckBox *m_chkNoMaterialData;
    QCheckBox *m_chkChannels;
};

} // namespace gelvane
