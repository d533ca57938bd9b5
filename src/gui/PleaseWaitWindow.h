#pragma once
// frmPleaseWait: the one progress window. It has no buttons; Esc writes
// "Cancelling..." into the status line, which the running loop compares.
#include <QWidget>

class QLabel;
class QProgressBar;

namespace gelvane {

class PleaseWaitWindow : public QWidget {
    Q_OBJECT
public:
    explicit PleaseWaitWindow(QWidget *owner);

    void setStatus(const QString &text);
    QString status() const;
    void setDetail(const QString &text);
    // A negative maximum hides the bar.
    void setBarMaximum(int maximum);
    void setBarValue(int value);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QLabel *m_lblPleaseWait;
    QLabel *m_lblFigure;
    QProgressBar *m_ProgressBar1;
};

} // namespace gelvane
