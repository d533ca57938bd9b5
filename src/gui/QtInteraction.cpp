#include "gui/QtInteraction.h"
#include "gui/WidgetText.h"

#include "gui/FileDialogs.h"
#include "gui/PaintNow.h"
#include "gui/PleaseWaitWindow.h"
#include "gui/maps/ChoosePicWindow.h"

#include <QColorDialog>
#include <QCoreApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace gelvane {

namespace {

std::string Bytes(const QString &text) {
    return text.toLatin1().toStdString();
}

QMessageBox::Icon QtIcon(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

PleaseWaitWindow *QtInteraction::progressWindow() const {
    return m_progress;
}

QtInteraction::~QtInteraction() {
    delete m_progress;
}

void QtInteraction::BeforeQuestion() {
    if (m_beforeMessage)
        m_beforeMessage();
    PaintNow(m_owner);
}

void QtInteraction::AfterQuestion() {
    // The work goes on at once and the window system's redraw request waits for it, so the
    // owner paints over the closed box itself.
    PaintNow(m_owner);
}

MsgResult QtInteraction::MessageBox(const std::string &text, const std::string &title, MsgIcon icon,
                                    MsgButtons buttons) {
    BeforeQuestion();
    QString shown = Latin1(text);
    shown.replace("\r\n", "\n");
    QMessageBox box(QtIcon(icon), Latin1(title.empty() ? std::string(kProgramTitle) : title), shown,
                    QMessageBox::NoButton, m_owner);
    box.setTextFormat(Qt::PlainText);
    switch (buttons) {
    case MsgButtons::OK:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case MsgButtons::OKCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case MsgButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case MsgButtons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    const int answer = box.exec();
    AfterQuestion();
    switch (answer) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    case QMessageBox::Ok:
        return MsgResult::OK;
    default:
        // A box closed by its title bar answers like its escape button.
        return buttons == MsgButtons::YesNo ? MsgResult::No
               : buttons == MsgButtons::OK  ? MsgResult::OK
                                            : MsgResult::Cancel;
    }
}

std::optional<std::string> QtInteraction::InputBox(const std::string &prompt, const std::string &title,
                                                   const std::string &defaultText) {
    BeforeQuestion();
    bool ok = false;
    const QString text = QInputDialog::getText(m_owner, Latin1(title.empty() ? std::string(kProgramTitle) : title),
                                               Latin1(prompt), QLineEdit::Normal, Latin1(defaultText), &ok);
    AfterQuestion();
    if (!ok)
        return std::nullopt;
    return Bytes(text);
}

std::optional<std::string> QtInteraction::ChooseFile(const FileDialogRequest &request) {
    BeforeQuestion();
    auto answer = ShowFileDialog(m_owner, request, *m_thumbnails);
    AfterQuestion();
    return answer;
}

std::optional<std::string> QtInteraction::ChooseFolder(const std::string &start, const std::string &title) {
    BeforeQuestion();
    auto answer = ShowFolderDialog(m_owner, start, title);
    AfterQuestion();
    return answer;
}

std::optional<RgbColor> QtInteraction::ChooseColor(const RgbColor &initial) {
    BeforeQuestion();
    const QColor chosen = QColorDialog::getColor(QColor(initial.Red, initial.Green, initial.Blue), m_owner);
    AfterQuestion();
    if (!chosen.isValid())
        return std::nullopt;
    return RgbColor{chosen.red(), chosen.green(), chosen.blue()};
}

int QtInteraction::ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) {
    BeforeQuestion();
    const int answer = ChoosePic(m_owner, *this, *m_thumbnails, wanted, candidates);
    AfterQuestion();
    return answer;
}

void QtInteraction::ProgressShow(const std::string &title, const std::string &status, int barMax) {
    // The window behind shows what the running command has done so far.
    BeforeQuestion();
    if (!m_progress) {
        m_progress = new PleaseWaitWindow(m_owner);
        // Over the middle of the window it reports on, as a dialog comes up.
        if (m_owner && m_owner->isVisible())
            m_progress->move(m_owner->frameGeometry().center() - m_progress->rect().center());
    }
    m_progress->setWindowTitle(Latin1(title));
    m_progress->setStatus(Latin1(status));
    m_progress->setBarMaximum(barMax);
    m_progress->show();
    m_progress->raise();
    m_progress->activateWindow();
    m_progress->setFocus();
    // The operation that shows it may run a while before it lets events run.
    WaitUntilMapped(m_progress);
    PaintNow(m_progress);
}

void QtInteraction::ProgressStatus(const std::string &status) {
    if (m_progress)
        m_progress->setStatus(Latin1(status));
}

void QtInteraction::ProgressDetail(const std::string &detail) {
    if (m_progress)
        m_progress->setDetail(Latin1(detail));
}

void QtInteraction::ProgressMax(int barMax) {
    if (m_progress)
        m_progress->setBarMaximum(barMax);
}

void QtInteraction::ProgressValue(int value) {
    if (m_progress)
        m_progress->setBarValue(value);
}

void QtInteraction::ProgressClose() {
    // Released, so the next use starts from a fresh window again.
    delete m_progress;
    if (m_owner && m_owner->isEnabled() && m_owner->isVisible())
        m_owner->activateWindow();
}

bool QtInteraction::ProgressVisible() const {
    return m_progress && m_progress->isVisible();
}

void QtInteraction::DoEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

bool QtInteraction::ProgressCancelling() const {
    return m_progress && m_progress->status() == kCancelling;
}

} // namespace gelvane
