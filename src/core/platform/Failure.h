#pragma once
// A failure with a run-time error number and description, in the form the
// program's failure handlers report ("..., error number N").
#include <stdexcept>
#include <string>

namespace gelvane {

enum ErrorNumber : int {
    ErrInvalidCall = 5,       // "Invalid procedure call or argument"
    ErrOverflow = 6,          // "Overflow"
    ErrSubscript = 9,         // "Subscript out of range"
    ErrTypeMismatch = 13,     // "Type mismatch"
    ErrFileNotFound = 53,     // "File not found"
    ErrDiskFull = 61,         // "Disk full"
    ErrInputPastEnd = 62,     // "Input past end of file"
    ErrPermissionDenied = 70, // "Permission denied"
    ErrPathFileAccess = 75,   // "Path/File access error"
    ErrPathNotFound = 76,     // "Path not found"
    ErrInvalidPicture = 481,  // "Invalid picture"
    // Failures of the file readers.
    ErrOutOfMemory = 7,      // "Out of memory"
    ErrInternal = 51,        // "Internal error"
    ErrBadRecordNumber = 63, // "Bad record number": a read at position 0
    // A command that names a control beyond the last of its group.
    ErrControlArrayElement = 340, // "Control array element 'N' doesn't exist"
};

class Failure : public std::runtime_error {
public:
    Failure(int number, std::string description)
        : std::runtime_error(description), Number(number), Description(std::move(description)) {}
    int Number;
    std::string Description;
};

// The standard description of a run-time error number.
std::string DescribeError(int number);

[[noreturn]] inline void Fail(int number) {
    throw Failure(number, DescribeError(number));
}

} // namespace gelvane
