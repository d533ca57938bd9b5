#include "gui/PleaseWaitWindow.h"

#include "core/platform/Interaction.h"
#include "gui/PaintNow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace gelvane {

PleaseWaitWindow::PleaseWaitWindow(QWidget *owner) : QWidget(owner, Qt::Dialog) {
    setObjectName("frmPleaseWait");
    setWindowTitle(" Please wait");
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_DeleteOnClose, false);

    m_lblPleaseWait = new QLabel("Please wait while loading...", this);
    m_lblPleaseWait->setObjectName("lblPleaseWait");
    QFont bold = m_lblPleaseWait->font();
    bold.setBold(true);
    m_lblPleaseWait->setFont(bold);

    m_lblFigure = new QLabel(this);
    m_lblFigure->setObjectName("lblFigure");
    m_lblFigure->setTextFormat(Qt::PlainText);
    // A long name must not widen the window.
    m_lblFigure->setMinimumWidth(1);
    m_lblFigure->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    m_ProgressBar1 = new QProgressBar(this);
    m_ProgressBar1->setObjectName("ProgressBar1");
    m_ProgressBar1->setMinimum(0);
    m_ProgressBar1->setTextVisible(false);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 14, 16, 14);
    layout->setSpacing(8);
    layout->addWidget(m_lblPleaseWait);
    layout->addWidget(m_lblFigure);
    layout->addWidget(m_ProgressBar1);
    setFixedSize(360, 110);
    setFocusPolicy(Qt::StrongFocus);
}

// Each change is painted at once: the operation that makes it lets events run only now and then.
void PleaseWaitWindow::setStatus(const QString &text) {
    if (text == m_lblPleaseWait->text())
        return;
    m_lblPleaseWait->setText(text);
    PaintNow(m_lblPleaseWait);
}

QString PleaseWaitWindow::status() const {
    return m_lblPleaseWait->text();
}

void PleaseWaitWindow::setDetail(const QString &text) {
    if (text == m_lblFigure->text())
        return;
    m_lblFigure->setText(text);
    PaintNow(m_lblFigure);
}

void PleaseWaitWindow::setBarMaximum(int maximum) {
    m_ProgressBar1->setVisible(maximum >= 0);
    if (maximum >= 0)
        m_ProgressBar1->setMaximum(maximum);
    PaintNow(this);
}

void PleaseWaitWindow::setBarValue(int value) {
    value = std::min(value, m_ProgressBar1->maximum());
    if (value == m_ProgressBar1->value())
        return;
    m_ProgressBar1->setValue(value);
    PaintNow(m_ProgressBar1);
}

void PleaseWaitWindow::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape) {
        m_lblPleaseWait->setText(kCancelling);
        PaintNow(m_lblPleaseWait);
    }
    event->accept();
}

void PleaseWaitWindow::closeEvent(QCloseEvent *event) {
    // Only the running operation closes the window; a close by the user asks to cancel.
    m_lblPleaseWait->setText(kCancelling);
    event->ignore();
}

} // namespace gelvane
