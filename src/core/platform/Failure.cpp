#include "core/platform/Failure.h"

namespace gelvane {

std::string DescribeError(int number) {
    switch (number) {
    case ErrInvalidCall:
        return "Invalid procedure call or argument";
    case ErrOverflow:
        return "Overflow";
    case ErrSubscript:
        return "Subscript out of range";
    case ErrTypeMismatch:
        return "Type mismatch";
    case ErrFileNotFound:
        return "File not found";
    case ErrDiskFull:
        return "Disk full";
    case ErrInputPastEnd:
        return "Input past end of file";
    case ErrPermissionDenied:
        return "Permission denied";
    case ErrPathFileAccess:
        return "Path/File access error";
    case ErrPathNotFound:
        return "Path not found";
    case ErrInvalidPicture:
        return "Invalid picture";
    case ErrOutOfMemory:
        return "Out of memory";
    case ErrInternal:
        return "Internal error";
    case ErrBadRecordNumber:
        return "Bad record number";
    default:
        return "Application-defined or object-defined error";
    }
}

} // namespace gelvane
