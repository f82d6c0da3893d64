// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api.h.in, commands.tbl and replies.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_command.h"

#include <memory>

namespace VCTP3 {

class PendingTable;

/// Commands with callbacks. Each form comes twice: with callbacks it returns the transaction id,
/// without it is sent and its answer ignored. The callbacks are those of the replies that the
/// command can get, "ok" first where others may come before it, and "error" last; each may be
/// null. The last reply, or the error, ends the transaction.
///
/// The forms of `APICommand`, which take the transaction id, are hidden here: `cmd_x(a, b)` could
/// not be told from them.
/// Thread: commands from any. Callbacks run on the thread of `parse` or of
/// `fail_all_pending_commands`, and may send commands.
class TARN_EXPORT API : public APICommand
{
public:
    API();
    /// Forgets what is in flight and calls nothing.
    ~API() override;

    /// How many commands await their last reply.
    unsigned int outstanding_commands() const;
    /// Forgets a command; whatever comes for it is ignored. False if there is none of that id.
    bool forget_transaction(AString const &xid);
    /// Ends every command in flight by its error callback, with "Failing all outstanding commands"
    /// and the code `general`. Does nothing while it is running already.
    ///
    /// The callbacks run while the table of commands is locked. A command that one of them sends
    /// is failed in the same run if it is still open; a callback that answers every failure by
    /// another command while the transport is down would never let it end, so after a million
    /// such commands the run stops with an assertion and leaves the rest.
    void fail_all_pending_commands();

    // Driving
    /// Answer: ok.
    AString cmd_stop(AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_stop();
    /// Sends OtherCar Offset? Rate? Quiet!. Answer: ok.
    AString cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
        Rate const &rate, bool has_quiet, bool const &quiet, AFunction const &on_ok,
        AFunction2<AString, ErrorCode> const &on_error);
    void cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
        Rate const &rate, bool has_quiet, bool const &quiet);
    AString cmd_drive(Car const &other_car, AFunction const &on_ok, AFunction2<AString,
        ErrorCode> const &on_error);
    void cmd_drive(Car const &other_car);
    AString cmd_drive(Car const &other_car, int const &offset, AFunction const &on_ok,
        AFunction2<AString, ErrorCode> const &on_error);
    void cmd_drive(Car const &other_car, int const &offset);
    AString cmd_drive(Car const &other_car, int const &offset, Rate const &rate,
        AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate);
    AString cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet,
        AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet);

    // Asking
    /// Sends Count. Answer: car* ok.
    AString cmd_cars(unsigned int const &count, AFunction const &on_ok,
        AFunction1<Car> const &on_car, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_cars(unsigned int const &count);
    /// Sends SideSet Speed?. Answer: road.
    AString cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed,
        AFunction2<Road, unsigned long long> const &on_road, AFunction2<AString,
        ErrorCode> const &on_error);
    void cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed);
    AString cmd_get_road(SideSet const &side_set, AFunction2<Road,
        unsigned long long> const &on_road, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_get_road(SideSet const &side_set);
    AString cmd_get_road(SideSet const &side_set, int const &speed, AFunction2<Road,
        unsigned long long> const &on_road, AFunction2<AString, ErrorCode> const &on_error);
    void cmd_get_road(SideSet const &side_set, int const &speed);

protected:
    void reply_ok(AString const &xid) override;
    void reply_error(AString const &xid, AString const &message, unsigned int code) override;
    void reply_car(AString const &xid, Car const &car) override;
    void reply_road(AString const &xid, Road const &road, unsigned long long serial) override;

private:
    std::unique_ptr<PendingTable> pending;
};

} // namespace VCTP3
