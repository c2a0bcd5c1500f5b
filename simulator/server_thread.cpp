#include "simulator/server_thread.h"

namespace tollwick::simulator {

ServerThread::ServerThread(Site site, Transport::Clock clock) : context_(new QObject) {
    context_->moveToThread(&thread_);
    thread_.start();
    onThread([&] {
        server_ = std::make_unique<Server>(std::move(site), std::move(clock));
        server_->listen();
        port_ = server_->port();
    });
}

ServerThread::~ServerThread() {
    onThread([&] { server_.reset(); });
    context_->deleteLater();
    thread_.quit();
    thread_.wait();
}

void ServerThread::onThread(const std::function<void()>& work) {
    QMetaObject::invokeMethod(context_, work, Qt::BlockingQueuedConnection);
}

} // namespace tollwick::simulator
