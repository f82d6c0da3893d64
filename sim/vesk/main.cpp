// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_field_clock.h"
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_storm.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int done = 0;
constexpr int usage = 2;
constexpr int cannot_listen = 3;

constexpr char description[]
    = "A simulated Vesk server: 40 channels that play and record, clips, lists, configuration,\n"
      "metadata and reports, on TCP port 8913. It keeps nothing when it ends.\n"
      "\n"
      "The demo event is a football match: \"Bank 1\" to \"Bank 4\" of moments seen by twelve\n"
      "cameras, the programme of both halves in \"Programme\", the playlists \"Opening\" and\n"
      "\"Goals\", the chase \"Whole match\", a metadata database \"demo\", tally and panel\n"
      "settings.\n"
      "\n"
      "It prints \"listening on ADDRESS:8913\" when it is ready, and ends on SIGTERM or SIGINT.\n"
      "Exit codes: 0 done, 2 usage, 3 cannot listen.";

struct Arguments
{
    QHostAddress address;
    VeskSimOptions options;
    int run_time_ms = 0;
};

/// Tells what is wrong with the command line; the exit code.
int refuse(QString const &text)
{
    std::fprintf(stderr, "vesk-sim: %s\nTry 'vesk-sim --help'.\n", qUtf8Printable(text));
    return usage;
}

QString standard_names()
{
    QStringList names;
    for (int value = 0; VCTP3::valid_VideoStandard(value); ++value)
        if (VeskFieldClock::has_rate(VCTP3::VideoStandard(value)))
            names << QString(VCTP3::VideoStandard_to_string(VCTP3::VideoStandard(value)));
    return names.join(QStringLiteral(", "));
}

QString board_names()
{
    return QStringLiteral("hd, uhd, zephyrx");
}

bool read_board(QString const &name, VeskBoard *board)
{
    auto const number = board_names().split(QStringLiteral(", ")).indexOf(name);
    if (number >= 0)
        *board = static_cast<VeskBoard>(number);
    return number >= 0;
}

bool read_storm(QCommandLineParser const &parser, VeskSimOptions *options, QString *error)
{
    options->storm = parser.isSet(QStringLiteral("storm"));
    if (!parser.isSet(QStringLiteral("spread")))
        return true;
    QString const text = parser.value(QStringLiteral("spread"));
    options->storm_parts = text.toUInt();
    if (options->storm_parts < 1 || options->storm_parts > VeskStorm::most_parts)
        *error
            = QStringLiteral("'%1' is no number from 1 to %2").arg(text).arg(VeskStorm::most_parts);
    else if (!options->storm)
        *error = QStringLiteral("--spread is for --storm");
    return error->isEmpty();
}

/// False, and what is wrong in \a error, for values that do not fit.
bool read(QCommandLineParser const &parser, Arguments *arguments, QString *error)
{
    QString const address = parser.value(QStringLiteral("address"));
    if (!arguments->address.setAddress(address)) {
        *error = QStringLiteral("'%1' is not an address").arg(address);
        return false;
    }
    QString const standard = parser.value(QStringLiteral("standard"));
    if (!VCTP3::string_to_VideoStandard(AString(standard), &arguments->options.standard)
        || !VeskFieldClock::has_rate(arguments->options.standard)) {
        *error
            = QStringLiteral("'%1' is not one of the standards %2").arg(standard, standard_names());
        return false;
    }
    QString const board = parser.value(QStringLiteral("board"));
    if (!read_board(board, &arguments->options.board)) {
        *error = QStringLiteral("'%1' is not one of the boards %2").arg(board, board_names());
        return false;
    }
    if (parser.isSet(QStringLiteral("run-time"))) {
        QString const text = parser.value(QStringLiteral("run-time"));
        bool is_number = false;
        double const seconds = text.toDouble(&is_number);
        if (!is_number || !(seconds > 0) || seconds > 1e6) {
            *error
                = QStringLiteral("'%1' is no number of seconds above 0, at most 1000000").arg(text);
            return false;
        }
        arguments->run_time_ms = std::max(1, qRound(seconds * 1000));
    }
    if (parser.isSet(QStringLiteral("demo")) && parser.isSet(QStringLiteral("empty"))) {
        *error = QStringLiteral("--demo and --empty exclude each other");
        return false;
    }
    arguments->options.demo = !parser.isSet(QStringLiteral("empty"));
    return read_storm(parser, &arguments->options, error);
}

void add_options(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QLatin1String(description));
    parser->addOptions({
        {QStringLiteral("address"), QStringLiteral("Listen on ADDRESS (default 127.0.0.1)."),
            QStringLiteral("ADDRESS"), QStringLiteral("127.0.0.1")},
        {QStringLiteral("standard"),
            QStringLiteral("Run at the video standard NAME (default 1080_59_94i), one of %1.")
                .arg(standard_names()),
            QStringLiteral("NAME"), QStringLiteral("1080_59_94i")},
        {QStringLiteral("board"),
            QStringLiteral("Have the video board NAME (default hd), one of %1.").arg(board_names()),
            QStringLiteral("NAME"), QStringLiteral("hd")},
        {QStringLiteral("demo"), QStringLiteral("Start with the demo event (the default).")},
        {QStringLiteral("empty"), QStringLiteral("Start without clips, lists and metadata.")},
        {QStringLiteral("storm"),
            QStringLiteral("Report, instead of what the channels do, everything about all of them "
                           "with every field to those who have registered for it.")},
        {QStringLiteral("spread"),
            QStringLiteral("Spread a storm over so many PARTS of a field, 1 to %1 (default 1: all "
                           "at its beginning).")
                .arg(VeskStorm::most_parts),
            QStringLiteral("PARTS")},
        {QStringLiteral("run-time"), QStringLiteral("End after so many SECONDS (default: never)."),
            QStringLiteral("SECONDS")},
        {QStringLiteral("trace"),
            QStringLiteral("Write every message to standard error: the number of the connection, "
                           "'<' for received or '>' for sent, and the text.")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Tell all this.")},
    });
}

/// Opens standard streams that are closed, so that what is printed does not go into whatever got
/// their numbers, as the pair of sockets that ends the program.
void hold_streams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
            int const held = ::open("/dev/null", O_RDWR);
    }
}

int signal_pipe[2];

void note_signal(int)
{
    char const byte = 0;
    [[maybe_unused]] auto const written = ::write(signal_pipe[1], &byte, 1);
}

/// Ends the application in its own time when the process is told to end, and not because nobody
/// reads what it prints.
void end_on_signals()
{
    std::signal(SIGPIPE, SIG_IGN);
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signal_pipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signal_pipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    struct sigaction action = {};
    action.sa_handler = note_signal;
    ::sigaction(SIGTERM, &action, nullptr);
    ::sigaction(SIGINT, &action, nullptr);
}

/// With control characters as JSON escapes them: a message is one line, and none of its texts may
/// steer a terminal.
void print_line(QByteArray const &line)
{
    QString visible;
    for (QChar const c : QString::fromUtf8(line)) {
        bool const is_control = c < QChar(u' ') || (c >= QChar(0x7f) && c < QChar(0xa0));
        visible += is_control
            ? QStringLiteral("\\u%1").arg(int(c.unicode()), 4, 16, QLatin1Char('0'))
            : QString(c);
    }
    std::fprintf(stderr, "%s\n", visible.toUtf8().constData());
}

int serve(Arguments const &arguments)
{
    end_on_signals();
    VeskSim server(arguments.address, arguments.options);
    if (!server.is_listening()) {
        std::fprintf(stderr, "vesk-sim: cannot listen on %s:%d: %s\n",
            qUtf8Printable(arguments.address.toString()), server.port(),
            qUtf8Printable(server.listen_error()));
        return cannot_listen;
    }
    std::printf(
        "listening on %s:%d\n", qUtf8Printable(arguments.address.toString()), server.port());
    std::fflush(stdout);
    if (arguments.run_time_ms)
        QTimer::singleShot(arguments.run_time_ms, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    return done;
}

} // namespace

int main(int argc, char **argv)
{
    hold_streams();
    QCoreApplication application(argc, argv);
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
    arguments.options.real_time = true;
    if (parser.isSet(QStringLiteral("trace")))
        arguments.options.trace = print_line;
    return serve(arguments);
}
