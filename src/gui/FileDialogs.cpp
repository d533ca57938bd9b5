#include "gui/FileDialogs.h"

#include "core/maps/Thumbnails.h"
#include "core/platform/Paths.h"
#include "gui/ThumbnailImage.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QScreen>
#include <QTreeView>
#include <QVBoxLayout>

namespace gelvane {

namespace {

QString Local(const std::string &text) {
    return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size()));
}

std::string Bytes(const QString &text) {
    return text.toLocal8Bit().toStdString();
}

// The real folder behind a setting or remembered folder, or empty.
QString ExistingFolder(const std::string &folder) {
    if (folder.empty() || folder == "none")
        return {};
    const auto resolved = ResolvePath(folder);
    if (resolved && FolderExists(*resolved))
        return Local(*resolved);
    return {};
}

} // namespace

QStringList NameFiltersOf(const std::string &filter) {
    QStringList parts = Local(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].trimmed();
        QStringList patterns;
        for (QString pattern : parts[i + 1].split(';', Qt::SkipEmptyParts)) {
            pattern = pattern.trimmed();
            if (pattern == "*.*")
                pattern = "*";
            if (!patterns.contains(pattern))
                patterns << pattern;
            const QString upper = pattern.toUpper();
            if (!patterns.contains(upper))
                patterns << upper;
        }
        if (!name.isEmpty() || !patterns.isEmpty())
            filters << name + " (" + patterns.join(' ') + ")";
    }
    return filters;
}

PreviewPanel::PreviewPanel(ThumbnailCache &thumbnails, QWidget *parent) : QWidget(parent), m_thumbnails(thumbnails) {
    setObjectName("PreviewPanel");
    m_picture = new QLabel(this);
    m_picture->setObjectName("picPreview");
    m_picture->setFixedSize(95, 95);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setStyleSheet("background-color: black;");
    m_check = new QCheckBox("Show preview", this);
    m_check->setObjectName("chkPreview");
    m_check->setChecked(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 0, 0);
    layout->addWidget(m_picture);
    layout->addWidget(m_check);
    layout->addStretch(1);
    connect(m_check, &QCheckBox::toggled, this, [this](bool on) {
        if (!on)
            m_picture->clear();
    });
}

void PreviewPanel::ShowKey(const std::string &key) {
    QPixmap pixmap = CachedThumbnailPixmap(m_thumbnails, key, 1);
    if (pixmap.isNull() && key == "NA")
        pixmap = CachedThumbnailPixmap(m_thumbnails, key, 0); // the fixed images stand in the main list
    if (pixmap.isNull()) {
        m_picture->clear();
        return;
    }
    m_picture->setPixmap(pixmap.scaled(m_picture->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void PreviewPanel::PreviewSelectedFile(const QString &path) {
    if (!m_check->isChecked())
        return;
    const PreviewChoice choice = gelvane::PreviewSelectedFile(Bytes(path));
    switch (choice.What) {
    case PreviewChoice::Nothing:
        return;
    case PreviewChoice::NotAvailable:
        ShowKey("NA");
        return;
    case PreviewChoice::Picture:
        // A picture met before is kept already; one that can't be decoded shows "NA".
        m_thumbnails.LoadThumbNail(choice.Path, 1);
        ShowKey(m_thumbnails.Contains(choice.Path, 1) ? choice.Path : std::string("NA"));
        return;
    }
}

// Large enough to show the name, size, type and date columns, and never larger than the screen.
static void SizeDialog(QFileDialog &dialog) {
    dialog.setViewMode(QFileDialog::Detail);
    QSize size(860, 540);
    if (const QScreen *screen = dialog.screen())
        size = size.boundedTo(screen->availableGeometry().size() - QSize(40, 60));
    dialog.resize(size.expandedTo(dialog.minimumSizeHint()));
    if (auto *files = dialog.findChild<QTreeView *>("treeView"))
        files->header()->resizeSection(0, dialog.width() * 2 / 5);
}

std::optional<std::string> ShowFileDialog(QWidget *parent, const FileDialogRequest &request,
                                          ThumbnailCache &thumbnails) {
    QFileDialog dialog(parent, Local(request.Title));
    dialog.setObjectName("CdlgEx");
    // Our own dialog, so that the preview panel has a place in it on every desktop.
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setAcceptMode(request.ForSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    if (request.ForSave)
        dialog.setFileMode(QFileDialog::AnyFile);
    else if (request.Flags & kOfnAllowMultiSelect)
        dialog.setFileMode(QFileDialog::ExistingFiles);
    else
        dialog.setFileMode((request.Flags & kOfnFileMustExist) ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(request.Flags & kOfnOverwritePrompt));
    const QStringList filters = NameFiltersOf(request.Filter);
    if (!filters.isEmpty())
        dialog.setNameFilters(filters);
    if (!request.DefaultExt.empty())
        dialog.setDefaultSuffix(Local(request.DefaultExt));
    const QString folder = ExistingFolder(request.InitialDir);
    if (!folder.isEmpty())
        dialog.setDirectory(folder);
    if (!request.FileName.empty())
        dialog.selectFile(Local(request.FileName));

    PreviewPanel *panel = nullptr;
    if (request.Preview) {
        if (!request.ForSave)
            thumbnails.Add("NA", FixedThumbnail("NA"), 1);
        panel = new PreviewPanel(thumbnails, &dialog);
        if (auto *grid = qobject_cast<QGridLayout *>(dialog.layout()))
            grid->addWidget(panel, 1, grid->columnCount(), 1, 1, Qt::AlignTop);
        QObject::connect(&dialog, &QFileDialog::currentChanged, panel, &PreviewPanel::PreviewSelectedFile);
    }
    SizeDialog(dialog);

    const bool accepted = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    if (request.Preview && !request.ForSave)
        thumbnails.Clear(1);
    if (!accepted)
        return std::nullopt;
    const QStringList files = dialog.selectedFiles();
    if (files.size() == 1)
        return Bytes(QDir::toNativeSeparators(files.first()));
    // Several files: their folder, then each name, separated by the character 0.
    std::string answer = Bytes(QDir::toNativeSeparators(QFileInfo(files.first()).absolutePath()));
    for (const QString &file : files)
        answer += '\0' + Bytes(QFileInfo(file).fileName());
    return answer;
}

std::optional<std::string> ShowFolderDialog(QWidget *parent, const std::string &start, const std::string &title) {
    QFileDialog dialog(parent, Local(title));
    dialog.setObjectName("BrowseForFolder");
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    const QString folder = ExistingFolder(start);
    if (!folder.isEmpty())
        dialog.setDirectory(folder);
    SizeDialog(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return Bytes(dialog.selectedFiles().first());
}

} // namespace gelvane
