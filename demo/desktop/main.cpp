// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/demo_show.h"
#include "demo/desktop/desk_style.h"
#include "demo/desktop/desk_window.h"
#include "demo/desktop/local_server.h"
#include "demo/desktop/log_page.h"
#include "demo/desktop/server_bar.h"

#include <Tarn/Glint>
#include <Tarn/GlintHealth>

#include <QApplication>
#include <QCommandLineParser>
#include <QHostAddress>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

constexpr int done = 0;
constexpr int failure = 1;
constexpr int usage = 2;

struct Arguments
{
    QString server;
    QString screenshot;
    QString page;
    double after = 5; // seconds
    QSize size = QSize(1280, 720);
};

void add_options(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral(
        "The channels of a Vesk server on one wall, with their transport.\n"
        "\n"
        "Keys: arrows move, with Shift they gang channels, as clicks with Ctrl do, Ctrl+A gangs\n"
        "all, Escape ends that; Space plays, K stops, J and L shuttle, comma and period jog by a\n"
        "field, R records, C cues the chosen clip, Page Up and Page Down choose another, F looks\n"
        "for one by its name: Return takes it, Escape shows them all again. Ctrl+1 to Ctrl+5\n"
        "choose the page.\n"
        "\n"
        "Exit codes: 0 done, 1 the picture could not be written, 2 usage."));
    parser->addOptions({
        {QStringLiteral("server"),
            QStringLiteral("Name or address of the server. Without it the program starts a "
                           "simulated one of its own, which ends with it."),
            QStringLiteral("HOST")},
        {QStringLiteral("size"), QStringLiteral("Size of the window (default 1280x720)."),
            QStringLiteral("WIDTHxHEIGHT")},
        {QStringLiteral("page"), QStringLiteral("Begin on the page of that title."),
            QStringLiteral("TITLE")},
        {QStringLiteral("screenshot"),
            QStringLiteral("Write a picture of the window and end. Needs no display."),
            QStringLiteral("FILE")},
        {QStringLiteral("after"),
            QStringLiteral("How long after the start, in seconds (default 5)."),
            QStringLiteral("SECONDS")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Tell all this.")},
    });
}

bool read_size(QString const &text, QSize *size)
{
    QStringList const parts = text.split(u'x');
    if (parts.size() != 2)
        return false;
    *size = QSize(parts[0].toInt(), parts[1].toInt());
    return size->width() >= 1024 && size->height() >= 576 && size->width() <= 7680
        && size->height() <= 4320;
}

/// False, and what is wrong in \a error, where a value is empty or an option would change nothing.
bool check_use(QCommandLineParser const &parser, QString *error)
{
    for (char const *name : {"server", "size", "page", "screenshot", "after"})
        if (parser.isSet(QLatin1String(name)) && parser.value(QLatin1String(name)).isEmpty())
            *error = QStringLiteral("--%1 needs a value").arg(QLatin1String(name));
    QString const server = parser.value(QStringLiteral("server"));
    if (server.contains(u':') && QHostAddress(server).isNull())
        *error = QStringLiteral("'%1' is not a name or an address without a port").arg(server);
    else if (parser.isSet(QStringLiteral("after")) && !parser.isSet(QStringLiteral("screenshot")))
        *error = QStringLiteral("--after is for --screenshot");
    return error->isEmpty();
}

/// False, and what is wrong in \a error, for values that do not fit.
bool read(QCommandLineParser const &parser, Arguments *arguments, QString *error)
{
    if (!check_use(parser, error))
        return false;
    arguments->server = parser.value(QStringLiteral("server"));
    arguments->screenshot = parser.value(QStringLiteral("screenshot"));
    arguments->page = parser.value(QStringLiteral("page"));
    QString const size = parser.value(QStringLiteral("size"));
    if (!size.isEmpty() && !read_size(size, &arguments->size)) {
        *error = QStringLiteral("'%1' is not a size from 1024x576 to 7680x4320").arg(size);
        return false;
    }
    QString const after = parser.value(QStringLiteral("after"));
    if (!after.isEmpty()) {
        bool is_number = false;
        arguments->after = after.toDouble(&is_number);
        if (!is_number || !(arguments->after > 0) || arguments->after > 1e6) {
            *error = QStringLiteral("'%1' is no number of seconds above 0, at most 1000000")
                         .arg(after);
            return false;
        }
    }
    return true;
}

int refuse(QString const &text)
{
    std::fprintf(stderr, "tarn-desk: %s\nTry 'tarn-desk --help'.\n", qUtf8Printable(text));
    return usage;
}

/// Pictures are made where there is no display, too.
void do_without_display()
{
    for (char const *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        if (!qEnvironmentVariableIsEmpty(variable))
            return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

QString round_trip_text(GlintHealth const *health)
{
    if (health->round_trip_us() < 0)
        return QStringLiteral("no round trip");
    return QStringLiteral("round trip %1 ms")
        .arg(double(health->round_trip_us()) / 1000, 0, 'f', 2);
}

/// Writes the picture, and what was measured until then to standard output.
void take_screenshot(QWidget *window, QString const &file, GlintHealth const *health)
{
    bool const written = window->grab().save(file);
    if (!written)
        std::fprintf(stderr, "tarn-desk: cannot write %s\n", qUtf8Printable(file));
    else
        std::printf("%s: %llu messages received, %s, longest stall %lld ms\n", qUtf8Printable(file),
            static_cast<unsigned long long>(health->messages_received()),
            qUtf8Printable(round_trip_text(health)),
            static_cast<long long>(health->longest_stall_ms()));
    QCoreApplication::exit(written ? done : failure);
}

/// Starts the server that the window is to show.
void start_local_server(LocalServer *server, Glint *hub, DeskWindow *window)
{
    QObject::connect(server, &LocalServer::listening, window, [=](QHostAddress const &address) {
        window->bar()->set_server(QStringLiteral("simulated, ") + address.toString());
        hub->set_server(address);
    });
    QObject::connect(server, &LocalServer::failed, window, [=](QString const &text) {
        window->bar()->show_problem(text);
        window->log()->note(text);
    });
    server->start();
}

int run(Arguments const &arguments)
{
    LocalServer local_server;
    Glint hub(false);
    DeskWindow window(&hub);
    window.resize(arguments.size);
    if (!arguments.page.isEmpty() && !window.show_page(arguments.page))
        return refuse(QStringLiteral("'%1' is not one of the pages %2")
                          .arg(arguments.page, window.page_titles().join(QStringLiteral(", "))));
    std::unique_ptr<DemoShow> show;
    if (arguments.server.isEmpty()) {
        show = std::make_unique<DemoShow>(&hub, &window, nullptr);
        start_local_server(&local_server, &hub, &window);
    } else {
        window.bar()->set_server(arguments.server);
        hub.set_server(arguments.server);
    }
    window.show();
    if (!arguments.screenshot.isEmpty())
        QTimer::singleShot(int(arguments.after * 1000), &window,
            [&] { take_screenshot(&window, arguments.screenshot, hub.get_health()); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    do_without_display();
    QApplication application(argc, argv);
    DeskStyle::apply(&application);
    QCommandLineParser parser;
    add_options(&parser);
    if (!parser.parse(QCoreApplication::arguments()))
        return refuse(parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        std::printf("%s", qUtf8Printable(parser.helpText()));
        return done;
    }
    if (!parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("'%1' is not expected").arg(parser.positionalArguments()[0]));
    Arguments arguments;
    QString error;
    if (!read(parser, &arguments, &error))
        return refuse(error);
    return run(arguments);
}
