#pragma once
// The Interaction of the program with a window: Qt message boxes, dialogs and
// the please-wait window, all owned by the main window once it exists.
#include "core/platform/Interaction.h"

#include <QPointer>
#include <functional>

class QWidget;

namespace gelvane {

class PleaseWaitWindow;
class ThumbnailCache;

class QtInteraction : public Interaction {
public:
    // The dialogs' previews and the map choice show pictures of `thumbnails`.
    explicit QtInteraction(ThumbnailCache &thumbnails) : m_thumbnails(&thumbnails) {}
    ~QtInteraction() override;

    // The window that owns the dialogs; the progress window gives it the focus back.
    void setOwner(QWidget *owner) { m_owner = owner; }
    PleaseWaitWindow *progressWindow() const;
    // Runs before a message box or any other question comes up, so that the window behind
    // it shows what a running command has done so far (the caption and materials behind
    // the channel question, the map choice or the folder chooser).
    void setBeforeMessage(std::function<void()> beforeMessage) { m_beforeMessage = std::move(beforeMessage); }

    MsgResult MessageBox(const std::string &text, const std::string &title, MsgIcon icon, MsgButtons buttons) override;
    std::optional<std::string> InputBox(const std::string &prompt, const std::string &title,
                                        const std::string &defaultText) override;
    std::optional<std::string> ChooseFile(const FileDialogRequest &request) override;
    std::optional<std::string> ChooseFolder(const std::string &start, const std::string &title) override;
    std::optional<RgbColor> ChooseColor(const RgbColor &initial) override;
    int ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) override;
    void ProgressShow(const std::string &title, const std::string &status, int barMax) override;
    void ProgressStatus(const std::string &status) override;
    void ProgressDetail(const std::string &detail) override;
    void ProgressMax(int barMax) override;
    void ProgressValue(int value) override;
    void ProgressClose() override;
    bool ProgressVisible() const override;
    void DoEvents() override;
    bool ProgressCancelling() const override;

private:
    // The owner is redrawn from the session and painted before a question or the progress
    // window comes up, and painted again once a question is answered.
    void BeforeQuestion();
    void AfterQuestion();

    ThumbnailCache *m_thumbnails;
    QPointer<QWidget> m_owner;
    QPointer<PleaseWaitWindow> m_progress;
    std::function<void()> m_beforeMessage;
};

} // namespace gelvane
