#include "tools/ombrel/FileWatch.h"
#include "tools/ombrel/Messages.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace ombrel::host {

namespace {

namespace fs = std::filesystem;

sigset_t EndingSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

[[noreturn]] void FailWatching(std::string const& what)
{
    throw Failure(kDataFault, what + ": cannot be watched: " + std::strerror(errno));
}

} // namespace

FileWatch::FileWatch(std::vector<std::string> const& paths)
    : m_events(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    , m_signals(-1)
{
    if (m_events < 0)
        FailWatching(paths.front());
    for (std::string const& path : paths) {
        std::error_code error;
        fs::path const target = fs::weakly_canonical(path, error);
        // A symbolic link may be changed, and what it points to.
        for (fs::path const& file : { fs::path(path), target }) {
            std::string const folder = file.has_parent_path() ? file.parent_path().string() : ".";
            int const watched
                = inotify_add_watch(m_events, folder.c_str(), IN_CLOSE_WRITE | IN_MODIFY | IN_MOVED_TO | IN_CREATE);
            if (watched < 0) {
                int const cause = errno;
                close(m_events);
                errno = cause;
                FailWatching(folder);
            }
            m_names[watched].insert(file.filename().string());
        }
    }
    sigset_t const signals = EndingSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    m_signals = signalfd(-1, &signals, SFD_CLOEXEC);
}

FileWatch::~FileWatch()
{
    close(m_events);
    if (m_signals >= 0)
        close(m_signals);
    sigset_t const signals = EndingSignals();
    // One that has come meanwhile was what ended the waiting.
    timespec const now {};
    while (sigtimedwait(&signals, nullptr, &now) > 0) { }
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

FileWatch::Change FileWatch::TakeEvents()
{
    Change change = Change::None;
    alignas(inotify_event) std::array<char, 16384> buffer;
    for (ssize_t count; (count = read(m_events, buffer.data(), buffer.size())) > 0;) {
        for (ssize_t at = 0; at < count;) {
            inotify_event event;
            std::memcpy(&event, buffer.data() + at, sizeof(event));
            char const* const name = buffer.data() + at + sizeof(event);
            at += static_cast<ssize_t>(sizeof(event) + event.len);
            auto const found = m_names.find(event.wd);
            bool const isLost = (event.mask & IN_Q_OVERFLOW) != 0;
            if (!isLost && (found == m_names.end() || event.len == 0 || !found->second.contains(name)))
                continue;
            if (isLost || (event.mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) != 0)
                change = Change::Done;
            else if (change == Change::None)
                change = Change::Begun;
        }
    }
    return change;
}

bool FileWatch::Wait()
{
    // Whoever keeps a file open is taken to have finished after that time without a change, in milliseconds.
    constexpr int kPause = 200;
    std::array<pollfd, 2> ready { { { m_events, POLLIN, 0 }, { m_signals, POLLIN, 0 } } };
    bool hasBegun = false;
    for (;;) {
        int const count = poll(ready.data(), ready.size(), hasBegun ? kPause : -1);
        if (count < 0 && errno != EINTR)
            FailWatching("the input");
        if (count > 0 && (ready[1].revents & POLLIN) != 0)
            return false;
        if (count == 0)
            return true;
        Change const change = count > 0 ? TakeEvents() : Change::None;
        if (change == Change::Done)
            return true;
        hasBegun = hasBegun || change == Change::Begun;
    }
}

} // namespace ombrel::host
