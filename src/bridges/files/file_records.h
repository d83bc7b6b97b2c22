#pragma once

#include "base/record.h"

namespace bridge {

// A folder that the user allowed, as it is kept between runs.
struct StoredFileRoot {
    std::string id;
    std::string name; // as it was when the folder was added
    Bytes bookmark;

    bool operator==(const StoredFileRoot&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &StoredFileRoot::id), required("name", &StoredFileRoot::name),
                          required("bookmark", &StoredFileRoot::bookmark)};
    }
};
static_assert(listsEveryMember<StoredFileRoot>());

// The same folder as others see it.
struct AuthorizedFileRootDescriptor {
    std::string id;
    std::string name;
    std::string path; // absolute; where the bookmark led when the list was last made

    bool operator==(const AuthorizedFileRootDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &AuthorizedFileRootDescriptor::id),
                          required("name", &AuthorizedFileRootDescriptor::name),
                          required("path", &AuthorizedFileRootDescriptor::path)};
    }
};
static_assert(listsEveryMember<AuthorizedFileRootDescriptor>());

struct ListFilesRequest {
    std::string rootID;
    std::string path; // relative to the root, as in all of these; empty for the root itself

    static constexpr auto fields() {
        return std::tuple{required("rootID", &ListFilesRequest::rootID), required("path", &ListFilesRequest::path)};
    }
};
static_assert(listsEveryMember<ListFilesRequest>());

struct ReadTextFileRequest {
    std::string rootID;
    std::string path;
    std::optional<int64_t> maximumBytes;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &ReadTextFileRequest::rootID),
                          required("path", &ReadTextFileRequest::path),
                          optional("maximumBytes", &ReadTextFileRequest::maximumBytes)};
    }
};
static_assert(listsEveryMember<ReadTextFileRequest>());

struct WriteTextFileRequest {
    std::string rootID;
    std::string path;
    std::string content;
    bool overwrite = false;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &WriteTextFileRequest::rootID),
                          required("path", &WriteTextFileRequest::path),
                          required("content", &WriteTextFileRequest::content),
                          required("overwrite", &WriteTextFileRequest::overwrite)};
    }
};
static_assert(listsEveryMember<WriteTextFileRequest>());

struct CreateDirectoryRequest {
    std::string rootID;
    std::string path;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &CreateDirectoryRequest::rootID),
                          required("path", &CreateDirectoryRequest::path)};
    }
};
static_assert(listsEveryMember<CreateDirectoryRequest>());

struct MoveFileRequest {
    std::string rootID;
    std::string sourcePath;
    std::string destinationPath;
    bool overwrite = false;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &MoveFileRequest::rootID),
                          required("sourcePath", &MoveFileRequest::sourcePath),
                          required("destinationPath", &MoveFileRequest::destinationPath),
                          required("overwrite", &MoveFileRequest::overwrite)};
    }
};
static_assert(listsEveryMember<MoveFileRequest>());

struct DeleteFileRequest {
    std::string rootID;
    std::string path;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &DeleteFileRequest::rootID), required("path", &DeleteFileRequest::path)};
    }
};
static_assert(listsEveryMember<DeleteFileRequest>());

// One file or folder. `size` is absent for a folder; `modifiedAt` when it lies outside the years 0001 to 9999.
struct FileItemDescriptor {
    std::string relativePath; // to the root, empty for the root itself
    std::string name;
    bool isDirectory = false;
    std::optional<int64_t> size; // in bytes
    std::optional<Date> modifiedAt;

    bool operator==(const FileItemDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            required("relativePath", &FileItemDescriptor::relativePath), required("name", &FileItemDescriptor::name),
            required("isDirectory", &FileItemDescriptor::isDirectory), optional("size", &FileItemDescriptor::size),
            optional("modifiedAt", &FileItemDescriptor::modifiedAt)};
    }
};
static_assert(listsEveryMember<FileItemDescriptor>());

struct TextFileContents {
    std::string rootID;
    std::string path; // as it was asked for
    std::string content;
    int64_t bytes = 0;

    static constexpr auto fields() {
        return std::tuple{required("rootID", &TextFileContents::rootID), required("path", &TextFileContents::path),
                          required("content", &TextFileContents::content), required("bytes", &TextFileContents::bytes)};
    }
};
static_assert(listsEveryMember<TextFileContents>());

} // namespace bridge
