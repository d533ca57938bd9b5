#pragma once
// Every file the program saves goes through here: it is written to a temporary
// file beside its target and renamed over it only when complete, so that a
// failed save leaves the previous file byte for byte as it was.
//
// The target is the file a symbolic link points at (the link stays); an existing
// target keeps its permissions; the temporary file is ".gelvane-" and a fixed-length
// code of the target's name, so any name the file system takes can be saved, and a
// temporary file left by a killed run is taken over by the next save of that target.
#include "core/platform/Failure.h"

#include <functional>
#include <string>
#include <string_view>

namespace gelvane {

// A save that failed; the description names the file and the reason
// ("Could not save /a/b.pz2: the disk is full").
class SaveFailure : public Failure {
public:
    using Failure::Failure;
};

class OutputFile {
public:
    // Opens the temporary file beside `path`; SaveFailure when that can't be done.
    explicit OutputFile(std::string_view path);
    // Without commit() the temporary file is removed and the target stays as it was.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    // Appends bytes; SaveFailure when they can't all be written.
    void write(std::string_view bytes);
    // Puts the complete file in place of the target. SaveFailure, with the target
    // untouched, when the data can't be made durable or another program replaced
    // the target since this object was made.
    void commit();

private:
    [[noreturn]] void fail(int error);
    void discard();
    std::string m_path; // as the caller named it, for messages
    std::string m_target;
    std::string m_temp;
    int m_fd = -1;
    bool m_existed = false;
    unsigned long long m_device = 0, m_inode = 0;
    long long m_seconds = 0, m_nanos = 0, m_size = 0;
};

// The whole of `bytes` as the file `path`, through an OutputFile.
void WriteFileAtomic(std::string_view path, std::string_view bytes);

// The temporary file's name for a target named `fileName`.
std::string SaveTemporaryName(std::string_view fileName);

// For tests: while an object lives, `fault` is asked at each step of every save on
// this thread and may return an errno value, which fails that step as the system
// would (a write then stores only part of its bytes first). It may also change the
// files itself, as another program would.
enum class SaveStep { Open, Write, Commit };
class SaveFaultScope {
public:
    using Fault = std::function<int(SaveStep step, const std::string &target)>;
    explicit SaveFaultScope(Fault fault);
    ~SaveFaultScope();
    SaveFaultScope(const SaveFaultScope &) = delete;
    SaveFaultScope &operator=(const SaveFaultScope &) = delete;

private:
    Fault m_previous;
};

} // namespace gelvane
