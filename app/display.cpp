#include "app/display.h"

#ifdef TARVEL4_XCB

#include <QByteArrayList>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace tarvel4 {

namespace {

/** The value of one of Qt's own options, which begin with one dash or two; the last one counts. */
QByteArray optionOf(const char *name, int argc, char *const argv[])
{
    QByteArray value;
    for (int i = 1; i + 1 < argc; ++i) {
        const QByteArray word(argv[i]);
        if (word == "--")
            break;
        if (word == QByteArray("-") + name || word == QByteArray("--") + name)
            value = argv[++i];
    }
    return value;
}

bool hasWayland()
{
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) // a connection that the parent has made
        return true;
    QByteArray path = qgetenv("WAYLAND_DISPLAY");
    if (path.isEmpty())
        path = "wayland-0";
    if (!path.startsWith('/'))
        path = qgetenv("XDG_RUNTIME_DIR") + '/' + path;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return true; // that is not certain
    const bool isThere =
        connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(socket);
    return isThere;
}

/** The platforms that Qt will try, as it chooses them: by option, by variable, by session. */
QByteArrayList platforms(int argc, char *const argv[])
{
    QByteArray names = qgetenv("QT_QPA_PLATFORM");
    const QByteArray option = optionOf("platform", argc, argv);
    if (!option.isEmpty())
        names = option;
    if (!names.isEmpty())
        return names.split(';');
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland")
        return {"wayland", "xcb"};
    return {"xcb"};
}

} // namespace

struct Display::Connection
{
    explicit Connection(const QByteArray &display)
        : server(xcb_connect(display.isEmpty() ? nullptr : display.constData(), nullptr))
    {}
    ~Connection() { xcb_disconnect(server); }
    Q_DISABLE_COPY(Connection)

    bool isThere() const { return xcb_connection_has_error(server) == 0; }

    xcb_connection_t *server;
};

Display::Display(int argc, char *const argv[])
{
    const QByteArrayList candidates = platforms(argc, argv);
    m_isReachable =
        std::any_of(candidates.begin(), candidates.end(), [&](const QByteArray &platform) {
            const QByteArray name = platform.split(':').constFirst();
            if (name != "xcb") // those without a display say themselves what they lack
                return !name.startsWith("wayland") || hasWayland();
            m_connection = std::make_unique<Connection>(optionOf("display", argc, argv));
            return m_connection->isThere();
        });
}

Display::~Display() = default;

} // namespace tarvel4

#else

namespace tarvel4 {

struct Display::Connection
{};

Display::Display(int, char *const[])
{}

Display::~Display() = default;

} // namespace tarvel4

#endif
