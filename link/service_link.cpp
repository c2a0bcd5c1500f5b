#include "link/service_link.h"

#include "wire/record_packing.h"
#include "wire/scramble.h"

#include <QCoreApplication>
#include <QNetworkProxy>
#include <QScopedValueRollback>

#include <utility>

namespace tollwick {
namespace {

// A wait gives the socket this long before it looks after the windows, and the windows are looked
// after at least this often however fast replies come in.
constexpr int kSliceMs = 5;
constexpr int kEventsEveryMs = 10;
constexpr int kReportCheckMs = 20;
// After a line without a further one for so long, what is still owed is not coming.
constexpr int kQuietMs = 300;

long errorNumber(QAbstractSocket::SocketError error) {
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return socket_error::Refused;
    case QAbstractSocket::RemoteHostClosedError:
        return socket_error::Closed;
    case QAbstractSocket::HostNotFoundError:
        return socket_error::HostNotFound;
    case QAbstractSocket::SocketAccessError:
        return socket_error::AccessDenied;
    case QAbstractSocket::SocketResourceError:
        return socket_error::NoBuffers;
    case QAbstractSocket::SocketTimeoutError:
        return socket_error::TimedOut;
    case QAbstractSocket::NetworkError:
        return socket_error::Unreachable;
    case QAbstractSocket::SocketAddressNotAvailableError:
        return socket_error::AddressNotAvailable;
    default:
        return static_cast<long>(error);
    }
}

} // namespace

ServiceLink::ServiceLink(const Clock& clock, QObject* parent) : QObject(parent), clock_(clock) {
    connect(&socket_, &QTcpSocket::connected, this, &ServiceLink::onConnected);
    connect(&socket_, &QTcpSocket::readyRead, this, &ServiceLink::onReadyRead);
    connect(&socket_, &QTcpSocket::disconnected, this, &ServiceLink::onDisconnected);
    connect(&socket_, &QTcpSocket::errorOccurred, this, &ServiceLink::onError);
    connect(&socket_, &QTcpSocket::stateChanged, this, &ServiceLink::stateChanged);
    connect(&report_timer_, &QTimer::timeout, this, [this] {
        // A reset between two notifications can go by without one, as seen under Wine.
        if (isOpen())
            socket_.waitForReadyRead(0);
        if (report_ && timedOut())
            finishReport(ReportEnd::TimedOut);
    });
    since_events_.start();
}

ServiceLink::~ServiceLink() {
    report_ = nullptr;
    socket_.disconnect(this);
}

void ServiceLink::Connect(const std::string& host, double port) {
    Close();
    host_ = host;
    failed_ = false;
    has_connected_ = false;
    if (!(port >= 1 && port <= 65535)) {
        failed_ = true;
        last_error_number_ = errorNumber(QAbstractSocket::SocketAddressNotAvailableError);
        last_error_text_ = "Invalid address or port number";
        return;
    }
    socket_.setProxy(QNetworkProxy::NoProxy);
    socket_.connectToHost(QString::fromStdString(host), static_cast<quint16>(port));
}

void ServiceLink::Close() {
    closeSocket(ReportEnd::Abandoned);
}

void ServiceLink::reset() {
    Close();
    receiver_.reset();
    given_up_ = false;
}

void ServiceLink::giveUp() {
    given_up_ = true;
    closeSocket(ReportEnd::LinkClosed);
}

bool ServiceLink::isConnecting() const {
    return socket_.state() == QAbstractSocket::HostLookupState ||
           socket_.state() == QAbstractSocket::ConnectingState;
}

bool ServiceLink::isOpen() const {
    return socket_.state() == QAbstractSocket::ConnectedState;
}

void ServiceLink::settle() {
    if (!report_)
        return;
    waitUntil([this] { return !report_ || timedOut(); });
    if (report_)
        finishReport(ReportEnd::TimedOut);
}

void ServiceLink::SendComrecord(const Comrecord& record) {
    if (waiting_) // the line belongs to the request that waits
        return;
    sent_at_ = clock_.now().secondsSinceMidnight();
    ReplyArrived_ = 0;
    if (!isOpen())
        return;
    removeScratchFile();
    const std::string line = encodeLine(record, receiver_.SessionKey, randomStart());
    socket_.write(line.data(), static_cast<qint64>(line.size()));
    socket_.flush();
    ++owed_;
}

bool ServiceLink::catchUp(const Comrecord& poll) {
    SendComrecord(poll);
    const QScopedValueRollback waiting(waiting_, true);
    QElapsedTimer quiet; // runs from the first line on
    waitUntil([&] {
        if (std::exchange(ReplyArrived_, Integer{0}) != 0)
            quiet.start();
        if (!isOpen() || owed_ == 0)
            return true;
        return quiet.isValid() ? quiet.hasExpired(kQuietMs) : timedOut();
    });
    owed_ = 0;
    return isOpen() && quiet.isValid();
}

Integer ServiceLink::WaitForReply() {
    if (waiting_) // a request from within the wait of another has no line of its own
        return result::NoReply;
    {
        const QScopedValueRollback waiting(waiting_, true);
        waitUntil([this, looked = false]() mutable {
            // A time-out of 0 still looks once.
            return ReplyArrived_ != 0 || !isOpen() || (std::exchange(looked, true) && timedOut());
        });
    }
    if (receiver_.hasLine())
        QMetaObject::invokeMethod(this, &ServiceLink::takeNextLine, Qt::QueuedConnection);
    const Integer reply = std::exchange(ReplyArrived_, Integer{0});
    return reply != 0 ? reply : result::NoReply;
}

void ServiceLink::reportReply(ReplyHandler handler) {
    report_ = std::move(handler);
    if (!isOpen())
        finishReport(ReportEnd::LinkClosed);
    else
        report_timer_.start(kReportCheckMs);
}

void ServiceLink::runUntil(const std::function<bool()>& is_over) {
    while (!is_over()) {
        QTimer slice; // an event of its own, so that the wait for one is bounded
        slice.setSingleShot(true);
        slice.start(kSliceMs);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        since_events_.restart();
    }
}

void ServiceLink::onConnected() {
    has_connected_ = true;
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
}

void ServiceLink::onReadyRead() {
    const QByteArray arrived = socket_.readAll();
    DataArrival({arrived.constData(), static_cast<std::size_t>(arrived.size())});
}

void ServiceLink::DataArrival(std::string_view arrived) {
    switch (receiver_.DataArrival(arrived, comrecord)) {
    case LinkReceiver::Arrival::Nothing:
    case LinkReceiver::Arrival::Key:
        return;
    case LinkReceiver::Arrival::TooLong:
        closeSocket(ReportEnd::LinkClosed);
        return;
    case LinkReceiver::Arrival::Record:
        break;
    }
    ReplyArrived_ = comrecord.Operation;
    if (ReplyArrived_ != 0 && owed_ > 0)
        --owed_;
    // One line per arrival; another one that is there already counts as the next arrival.
    if (receiver_.hasLine())
        QMetaObject::invokeMethod(this, &ServiceLink::takeNextLine, Qt::QueuedConnection);
    if (report_ && ReplyArrived_ != 0)
        finishReport(ReportEnd::Replied, std::exchange(ReplyArrived_, Integer{0}));
}

void ServiceLink::takeNextLine() {
    // A reply that the wait has yet to see is not overwritten; the wait's end looks for what is
    // left.
    const bool unseen_reply = waiting_ && ReplyArrived_ != 0;
    if (receiver_.hasLine() && !unseen_reply)
        DataArrival({});
}

void ServiceLink::onDisconnected() {
    // A reply that came together with the close is still the reply.
    while (receiver_.hasLine() && ((waiting_ && ReplyArrived_ == 0) || report_))
        DataArrival({});
    closeSocket(ReportEnd::LinkClosed);
}

void ServiceLink::onError() {
    // A slice of a wait that passed without data is no error of the link.
    if (socket_.error() == QAbstractSocket::SocketTimeoutError && isOpen())
        return;
    last_error_number_ = errorNumber(socket_.error());
    last_error_text_ = socket_.errorString().toStdString();
    // The service's closing of its end is an end, not a failure.
    if (socket_.error() != QAbstractSocket::RemoteHostClosedError)
        failed_ = true;
}

template <class IsOver>
void ServiceLink::waitUntil(IsOver is_over) {
    const LockedInput locked(*input_lock_);
    while (!is_over())
        pump();
}

void ServiceLink::pump() {
    if (receiver_.hasLine())
        takeNextLine();
    else if (isOpen())
        socket_.waitForReadyRead(kSliceMs);
    if (since_events_.hasExpired(kEventsEveryMs)) {
        QCoreApplication::processEvents();
        eventsAreProcessed();
    }
}

bool ServiceLink::timedOut() const {
    // The clock restarts at midnight and the difference is not corrected: a wait that spans
    // midnight goes on waiting. Wanted.
    const auto elapsed = static_cast<Single>(clock_.now().secondsSinceMidnight() - sent_at_);
    return elapsed > com_timeout_;
}

void ServiceLink::closeSocket(ReportEnd end) {
    receiver_.close();
    report_timer_.stop();
    owed_ = 0;
    // Taken first: aborting reports the closed socket once more, from within.
    const ReplyHandler handler = std::exchange(report_, nullptr);
    if (socket_.state() != QAbstractSocket::UnconnectedState)
        socket_.abort();
    if (handler)
        handler(end, 0);
}

void ServiceLink::finishReport(ReportEnd end, Integer result) {
    report_timer_.stop();
    const ReplyHandler handler = std::exchange(report_, nullptr);
    handler(end, result);
}

} // namespace tollwick
