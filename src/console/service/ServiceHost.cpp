#include "console/service/ServiceHost.h"

#include "console/service/WatchHosts.h"
#include "platform/FilePublisher.h"
#include "platform/Files.h"
#include "platform/World.h"
#include "platform/mosquitto/MosquittoPublisher.h"
#include "platform/posix/NotedSignals.h"
#include "platform/posix/ServiceManager.h"

namespace velmoor {
namespace {

// A broker that sends an endless message must not fill the computer with it.
constexpr std::size_t kMostMemory = std::size_t{64} << 20U;
constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
constexpr std::string_view kFile = "file:";

// Its first line, without the end.
std::string SecretIn(const std::string& path) {
  if (path.empty()) return {};
  const std::string text = world().files->ReadSecret(path);
  return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

void ServiceHost::Begin(const std::string& device, const WatchSettings& settings) {
  // It lends the port, and takes it from nobody.
  port_.SetBorrows(false);
  if (!lender_ || device != device_) lender_.emplace(device);
  device_ = device;
  if (settings.listen != address_) {
    listener_.reset();
    address_ = settings.listen;
    if (!address_.empty()) listener_ = std::make_unique<posix::MetricsListener>(address_);
  }
  if (ready_) return;
  posix::NotedSignals::RereadAtHangUp();
  posix::BoundMemory(kMostMemory);
}

bool ServiceHost::Ends() {
  const bool ends = posix::NotedSignals::Came();
  if (ends) posix::NotedSignals::Settle();
  ends_ = ends_ || ends;
  return ends_;
}

bool ServiceHost::Rereads() {
  return posix::NotedSignals::HungUp();
}

bool ServiceHost::IsPortWanted() {
  return lender_->IsWanted();
}

void ServiceHost::PortIsFree() {
  lender_->TellFree();
}

void ServiceHost::Tell(const std::string& words) {
  out_ << words << std::endl;  // at once: whoever reads it may be a pipe
}

void ServiceHost::Alive(const std::string& words) {
  posix::TellServiceManager((ready_ ? "" : "READY=1\n") + std::string("WATCHDOG=1\nSTATUS=") +
                            words);
  if (!ready_) posix::ReturnMemory();
  ready_ = true;
}

void ServiceHost::ShowMetrics(const std::string& text) {
  if (listener_) listener_->Show(text);
}

std::unique_ptr<Publisher> ServiceHost::Publish(const WatchSettings& settings,
                                                const Publication& birth, const Publication& will) {
  if (settings.broker.starts_with(kFile)) {
    return std::make_unique<FilePublisher>(settings.broker.substr(kFile.size()), birth,
                                           static_cast<std::size_t>(settings.spool) * kMegabyte);
  }
  mosquitto_broker::Broker broker = mosquitto_broker::BrokerAt(settings.broker);
  broker.client = birth.topic;
  broker.user = settings.user;
  broker.password = SecretIn(settings.passwordFile);
  broker.authority = settings.authority;
  broker.certificate = settings.certificate;
  broker.key = settings.key;
  return std::make_unique<mosquitto_broker::MosquittoPublisher>(std::move(broker), birth, will);
}

std::unique_ptr<WatchHost> MakeWatchHost(std::ostream& out, SerialPort& port) {
  return std::make_unique<ServiceHost>(out, dynamic_cast<posix::PosixSerialPort&>(port));
}

}  // namespace velmoor
