// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

class VeskRequest;

// The parameters of each command: an option for what may be absent, a bool for a flag.

// Driving

struct StopArgs
{
};

struct DriveArgs
{
    VCTP3::Car other_car;
    AOption<int> offset;
    AOption<VCTP3::Rate> rate;
    bool quiet = false;
};

// Asking

struct CarsArgs
{
    unsigned int count = 0;
};

struct GetRoadArgs
{
    VCTP3::SideSet side_set;
    AOption<int> speed;
};

// Readers of a command's parameters. False: the reason, which names the parameter, in *error.

// Driving
bool read_stop(XMLTree const &command, StopArgs *args, AString *error);
bool read_drive(XMLTree const &command, DriveArgs *args, AString *error);
// Asking
bool read_cars(XMLTree const &command, CarsArgs *args, AString *error);
bool read_get_road(XMLTree const &command, GetRoadArgs *args, AString *error);

/// Answers commands, each by the function of its name, which ends \a request by one last
/// reply. Families of commands are classes that derive virtually and override theirs.
class VeskHandler
{
public:
    virtual ~VeskHandler() = default;

    // Driving
    virtual void on_stop(VeskRequest &request, StopArgs const &args) = 0;
    virtual void on_drive(VeskRequest &request, DriveArgs const &args) = 0;

    // Asking
    virtual void on_cars(VeskRequest &request, CarsArgs const &args) = 0;
    virtual void on_get_road(VeskRequest &request, GetRoadArgs const &args) = 0;
};

/// Whether there is a command of that name.
bool vesk_knows_command(AString const &name);
/// Reads the command element \a command and calls its function. False, and nothing called:
/// an unknown name or a bad parameter, with the reason in *error.
bool vesk_dispatch(XMLTree const &command, VeskRequest &request, VeskHandler &handler,
    AString *error);
