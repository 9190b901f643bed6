#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace ombrel::host {

/// Waits for changes of files: written, or replaced by another of the same name. Their folders are watched, so that
/// files may come and go. While one lives, SIGINT and SIGTERM do not end the program but the waiting.
class FileWatch {
public:
    /// Throws Failure.
    explicit FileWatch(std::vector<std::string> const& paths);
    ~FileWatch();
    FileWatch(FileWatch const&) = delete;
    FileWatch& operator=(FileWatch const&) = delete;

    /// Returns when a file was changed since the last call and whoever wrote it has closed it, or pauses; false when
    /// the program is to end.
    bool Wait();

private:
    enum class Change { None, Begun, Done };
    /// What the events that have come say of the files.
    Change TakeEvents();

    int m_events;
    int m_signals;
    /// The names that are looked for in each folder.
    std::map<int, std::set<std::string>> m_names;
};

} // namespace ombrel::host
