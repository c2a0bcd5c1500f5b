// The connection to the service: one TCP socket, its session key, and at most one request on its
// way.
#pragma once

#include "base/clock.h"
#include "link/input_lock.h"
#include "wire/link_receiver.h"

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <string>

namespace tollwick {

// The numbers that administrators know the errors of a connection by.
namespace socket_error {
inline constexpr long AccessDenied = 10013;
inline constexpr long AddressNotAvailable = 10049;
inline constexpr long Unreachable = 10051;
inline constexpr long Closed = 10054;
inline constexpr long NoBuffers = 10055;
inline constexpr long TimedOut = 10060;
inline constexpr long Refused = 10061;
inline constexpr long HostNotFound = 11001;
} // namespace socket_error

class ServiceLink : public QObject {
    Q_OBJECT
public:
    // How the wait for a reply that is reported later ended.
    enum class ReportEnd {
        Replied,
        TimedOut,
        LinkClosed, // by the service or an error
        Abandoned,  // by the console itself
    };
    // `result` is the code of the reply, if there is one.
    using ReplyHandler = std::function<void(ReportEnd end, Integer result)>;

    explicit ServiceLink(const Clock& clock, QObject* parent = nullptr);
    ~ServiceLink() override;

    void setInputLock(InputLock& lock) { input_lock_ = &lock; }
    // Held by whatever waits for the service.
    [[nodiscard]] InputLock& inputLock() { return *input_lock_; }
    [[nodiscard]] const Clock& clock() const { return clock_; }
    // Seconds to wait for a reply.
    void setComTimeout(Single seconds) { com_timeout_ = seconds; }

    // Starts a new connection; an old one is closed. `host` is UTF-8; a port outside 1..65535 fails
    // like an address that cannot be used.
    void Connect(const std::string& host, double port);
    // Closes the socket and forgets whatever has not been read; an awaited report ends as
    // Abandoned.
    void Close();
    // Forgets the session key, too.
    void reset();
    // Ends what the link is waiting for, as if the service had closed the connection.
    void giveUp();
    // True from then on until the next reset().
    [[nodiscard]] bool hasGivenUp() const { return given_up_; }

    [[nodiscard]] bool isConnecting() const;
    [[nodiscard]] bool isOpen() const;
    // True when the last Connect() got its connection, even if that has ended since.
    [[nodiscard]] bool hasConnected() const { return has_connected_; }
    [[nodiscard]] bool hasFailed() const { return failed_; }
    // The state's number, for messages.
    [[nodiscard]] int stateNumber() const { return socket_.state(); }
    // Number and description of the last socket error.
    [[nodiscard]] long lastErrorNumber() const { return last_error_number_; }
    [[nodiscard]] const std::string& lastErrorText() const { return last_error_text_; }
    // The host that the link was last connected to, UTF-8.
    [[nodiscard]] const std::string& host() const { return host_; }

    [[nodiscard]] Integer KeyReceived() const { return receiver_.KeyReceived; }

    // The one record that is shared by all requests and replies.
    Comrecord comrecord;

    // Waits, with input locked, until no report is awaited any more; to be called before
    // `comrecord` is filled for another request, since the reply on its way is unpacked into it.
    void settle();
    // True when a reply has not come to a request that nobody waits for any more.
    [[nodiscard]] bool isOwed() const { return owed_ > 0 && !report_; }
    // Makes sure that nothing is on its way: sends a poll and takes lines, with input locked, until
    // none is owed any more or, since a service may have dropped one, none has come for a while
    // after at least one. False when none came within the time-out, or the link is gone.
    bool catchUp(const Comrecord& poll);
    // Sends the record as one line, scrambled with the session key. Nothing is sent on a link that
    // is not open.
    void SendComrecord(const Comrecord& record);
    // Waits for the reply to what was just sent, with input locked and events processed; returns
    // its result code, or result::NoReply after the time-out or on a link that is not open.
    Integer WaitForReply();
    // Reports the reply to what was just sent later and locks nothing. The handler is called
    // exactly once.
    void reportReply(ReplyHandler handler);

    // True while a reply is waited for or a report is awaited.
    [[nodiscard]] bool isWaiting() const { return waiting_ || report_; }

    // To be called by what the event loop has just started, so that a wait need not run it at once.
    void eventsAreProcessed() { since_events_.restart(); }
    // Lets sockets and windows process what happens until `is_over`, which is asked every few
    // milliseconds. Locks nothing.
    void runUntil(const std::function<bool()>& is_over);

signals:
    void stateChanged();

private:
    void onConnected();
    void onReadyRead();
    void onDisconnected();
    void onError();

    void DataArrival(std::string_view arrived);
    void takeNextLine();
    // The same for a reply, with input locked: what the socket brings comes first.
    template <class IsOver>
    void waitUntil(IsOver is_over);
    // Gives socket data a chance to arrive, and windows to repaint now and then.
    void pump();
    [[nodiscard]] bool timedOut() const;
    void closeSocket(ReportEnd end);
    void finishReport(ReportEnd end, Integer result = 0);

    const Clock& clock_;
    NoInputLock no_lock_;
    InputLock* input_lock_ = &no_lock_;
    Single com_timeout_ = 30;

    QTcpSocket socket_;
    LinkReceiver receiver_;
    std::string host_;
    bool has_connected_ = false;
    bool failed_ = false;
    bool given_up_ = false;
    long last_error_number_ = 0;
    std::string last_error_text_;

    // 0 while a request is outstanding, else the result code of the reply.
    Integer ReplyArrived_ = 0;
    int owed_ = 0;       // replies that have not come yet on this connection
    double sent_at_ = 0; // seconds since midnight
    bool waiting_ = false;
    ReplyHandler report_;
    QTimer report_timer_;
    QElapsedTimer since_events_;
};

} // namespace tollwick
