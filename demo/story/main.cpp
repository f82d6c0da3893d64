// SPDX-License-Identifier: Apache-2.0
#include "demo/story/story.h"

#include <QCommandLineParser>
#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows an application that controls a simulated server."));
    parser.addHelpOption();
    QCommandLineOption const simulator(QStringLiteral("simulator"),
        QStringLiteral("Path of vesk-sim."), QStringLiteral("path"), QStringLiteral("vesk-sim"));
    QCommandLineOption const address(QStringLiteral("address"),
        QStringLiteral("Loopback address for it."), QStringLiteral("address"),
        QStringLiteral("127.0.0.1"));
    parser.addOptions({simulator, address});
    parser.process(app);
    return Story(parser.value(simulator), parser.value(address)).run() ? 0 : 1;
}
