#include "platform/mosquitto/MosquittoPublisher.h"

#include <mosquitto.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor::mosquitto_broker {
namespace {

using namespace std::chrono_literals;

constexpr int kAtLeastOnce = 1;
constexpr std::size_t kWindow = 32;  // messages under way
constexpr int kKeepAlive = 30;       // s
constexpr int kLook = 200;           // ms
constexpr auto kAnswer = 10s;        // to a connection
constexpr auto kAcknowledge = 30s;   // of a message
constexpr auto kShortestRest = 1000ms;
constexpr auto kLongestRest = 10000ms;
constexpr auto kStable = 30s;     // a connection that held so long is tried again at once
constexpr int kMostReads = 5000;  // within a second: nothing that was asked for
constexpr int kDefaultPort = 1883;
constexpr int kEncryptedPort = 8883;

void Check(int result, const char* what) {
  if (result == MOSQ_ERR_SUCCESS) return;
  const std::string reason = result == MOSQ_ERR_ERRNO ? std::generic_category().message(errno)
                                                      : mosquitto_strerror(result);
  throw std::runtime_error(std::string(what) + ": " + reason);
}

const char* OrNull(const std::string& text) {
  return text.empty() ? nullptr : text.c_str();
}

// The library is set up once, for as long as the program runs.
void SetUpLibrary() {
  static const int kDone = mosquitto_lib_init();
  Check(kDone, "The broker's library");
}

}  // namespace

Broker BrokerAt(const std::string& address) {
  Broker broker;
  std::string rest;
  const auto takes = [&](std::string_view scheme) {
    if (!address.starts_with(scheme)) return false;
    rest = address.substr(scheme.size());
    return true;
  };
  broker.encrypted = takes("mqtts://");
  if (!broker.encrypted && !takes("mqtt://")) {
    throw std::runtime_error("'" + address +
                             "' is no broker: mqtt://host, mqtts://host or file:/path");
  }
  broker.port = broker.encrypted ? kEncryptedPort : kDefaultPort;
  std::string port;
  const std::size_t bracket = rest.find(']');
  const std::size_t colon = rest.find(':', bracket == std::string::npos ? 0 : bracket);
  if (colon != std::string::npos) {
    port = rest.substr(colon + 1);
    rest.resize(colon);
    const auto number = ParseWhole(port);
    if (!number || *number < 1 || *number > 65535) {
      throw std::runtime_error("'" + address + "': the port is a number from 1 to 65535");
    }
    broker.port = static_cast<int>(*number);
  }
  if (rest.starts_with('[') && rest.ends_with(']')) rest = rest.substr(1, rest.size() - 2);
  if (rest.empty() || rest.find_first_of("@/ ") != std::string::npos) {
    throw std::runtime_error("'" + address + "' names no host; user and password stand apart");
  }
  broker.host = rest;
  return broker;
}

MosquittoPublisher::MosquittoPublisher(Broker broker, Publication birth, Publication will)
    : broker_(std::move(broker)), birth_(std::move(birth)), will_(std::move(will)) {
  SetUpLibrary();
  (void)MakeClient();  // what cannot be set is told now
  thread_ = std::thread([this] { Run(); });
}

MosquittoPublisher::~MosquittoPublisher() {
  Join();
}

// ---- whoever publishes

bool MosquittoPublisher::Hand(const Publication& message) {
  Client client;
  {
    const std::scoped_lock lock(mutex_);
    if (connection_ != taken_ || lost_ || ends_) return false;
    client = client_;
  }
  if (!client || handed_.size() >= kWindow) return false;
  int number = 0;
  if (Send(client.get(), message, &number) != MOSQ_ERR_SUCCESS) return false;
  handed_.push_back({number, std::chrono::steady_clock::now()});
  return true;
}

std::size_t MosquittoPublisher::TakeArrived() {
  std::size_t count = 0;
  for (; !handed_.empty() && arrived_.erase(handed_.front().number) > 0; ++count) {
    handed_.pop_front();
  }
  return count;
}

Publisher::Progress MosquittoPublisher::Take() {
  Progress progress;
  const std::scoped_lock lock(mutex_);
  progress.delivered = TakeArrived();
  if (!handed_.empty() && std::chrono::steady_clock::now() - handed_.front().when > kAcknowledge) {
    givesUp_ = true;
  }
  progress.lost = std::exchange(lost_, false);
  progress.connected = std::exchange(connected_, false);
  if (progress.lost || connection_ != taken_) {
    handed_.clear();
    arrived_.clear();
    taken_ = connection_;
  }
  return progress;
}

std::string MosquittoPublisher::Trouble() const {
  const std::scoped_lock lock(mutex_);
  if (trouble_.empty()) return {};
  return "The broker " + broker_.host + ":" + NumberText(broker_.port) +
         " takes no messages: " + trouble_;
}

void MosquittoPublisher::End(const Publication& last, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  bool handed = false;
  while (Trouble().empty() && std::chrono::steady_clock::now() < end) {
    if (!handed) handed = Hand(last);
    if (handed && handed_.empty()) break;
    std::this_thread::sleep_for(5ms);
    const std::scoped_lock lock(mutex_);
    (void)TakeArrived();  // told to nobody any more: the next process delivers those again
  }
  Join();
}

void MosquittoPublisher::Join() {
  {
    const std::scoped_lock lock(mutex_);
    ends_ = true;
  }
  if (thread_.joinable()) thread_.join();
}

int MosquittoPublisher::Send(mosquitto* client, const Publication& message, int* number) {
  return mosquitto_publish(client, number, message.topic.c_str(),
                           static_cast<int>(message.text.size()), message.text.data(), kAtLeastOnce,
                           message.retained);
}

// ---- the thread

bool MosquittoPublisher::Ends() const {
  const std::scoped_lock lock(mutex_);
  return ends_;
}

void MosquittoPublisher::Run() {
  std::chrono::milliseconds rest = kShortestRest;
  while (!Ends()) {
    const auto begun = std::chrono::steady_clock::now();
    std::string reason;
    try {
      reason = Serve();
    } catch (const std::exception& error) {
      reason = error.what();
    }
    Lose(reason);
    if (std::chrono::steady_clock::now() - begun > kStable) rest = kShortestRest;
    Rest(rest);
    rest = std::min<std::chrono::milliseconds>(2 * rest, kLongestRest);
  }
}

void MosquittoPublisher::Rest(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!Ends() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(100ms);
}

MosquittoPublisher::Client MosquittoPublisher::MakeClient() {
  Client client(mosquitto_new(broker_.client.c_str(), true, this), mosquitto_destroy);
  if (!client) throw std::runtime_error("The broker's library has no memory.");
  mosquitto* const raw = client.get();
  Check(mosquitto_threaded_set(raw, true), "The broker's library");
  Check(mosquitto_will_set(raw, will_.topic.c_str(), static_cast<int>(will_.text.size()),
                           will_.text.data(), kAtLeastOnce, will_.retained),
        "The last will");
  if (!broker_.user.empty()) {
    Check(mosquitto_username_pw_set(raw, broker_.user.c_str(), broker_.password.c_str()),
          "User and password");
  }
  if (broker_.encrypted) {
    const char* const folder = broker_.authority.empty() ? "/etc/ssl/certs" : nullptr;
    Check(mosquitto_tls_set(raw, OrNull(broker_.authority), folder, OrNull(broker_.certificate),
                            OrNull(broker_.key), nullptr),
          "The certificates");
  }
  mosquitto_connect_callback_set(raw, [](mosquitto* at, void* self, int result) {
    static_cast<MosquittoPublisher*>(self)->OnConnect(at, result);
  });
  mosquitto_publish_callback_set(raw, [](mosquitto* /*at*/, void* self, int message) {
    static_cast<MosquittoPublisher*>(self)->OnPublish(message);
  });
  mosquitto_message_callback_set(raw, [](mosquitto* /*at*/, void* self, const mosquitto_message*) {
    static_cast<MosquittoPublisher*>(self)->refusal_ = "it sends what nobody has asked for";
  });
  return client;
}

std::string MosquittoPublisher::Serve() {
  served_ = MakeClient();
  const Client client = served_;
  accepted_ = false;
  refusal_.clear();
  Check(mosquitto_connect_async(client.get(), broker_.host.c_str(), broker_.port, kKeepAlive),
        "no connection");
  const auto begun = std::chrono::steady_clock::now();
  auto second = begun;
  int reads = 0;
  for (;;) {
    const int result = mosquitto_loop(client.get(), kLook, 1);
    if (!refusal_.empty()) return refusal_;
    if (result != MOSQ_ERR_SUCCESS) {
      return result == MOSQ_ERR_ERRNO ? std::generic_category().message(errno)
                                      : mosquitto_strerror(result);
    }
    const auto now = std::chrono::steady_clock::now();
    if (!accepted_ && now - begun > kAnswer) return "it does not answer";
    if (now - second > 1s) {
      second = now;
      reads = 0;
    }
    if (++reads > kMostReads) return "it floods the line";
    if (Ends()) {
      // In order, so that the broker keeps the last will to itself.
      mosquitto_disconnect(client.get());
      (void)mosquitto_loop(client.get(), 0, 1);
      return {};
    }
    const std::scoped_lock lock(mutex_);
    if (std::exchange(givesUp_, false)) return "it acknowledges nothing";
  }
}

void MosquittoPublisher::OnConnect(mosquitto* client, int result) {
  if (result != 0) {
    refusal_ = mosquitto_connack_string(result);
    return;
  }
  accepted_ = true;
  (void)Send(client, birth_, nullptr);
  const std::scoped_lock lock(mutex_);
  client_ = served_;
  ++connection_;
  connected_ = true;
  trouble_.clear();
}

void MosquittoPublisher::OnPublish(int message) {
  const std::scoped_lock lock(mutex_);
  arrived_.insert(message);
}

void MosquittoPublisher::Lose(const std::string& reason) {
  const std::scoped_lock lock(mutex_);
  client_.reset();
  served_.reset();
  lost_ = true;
  givesUp_ = false;
  trouble_ = reason.empty() ? "the connection was closed" : reason;
}

}  // namespace velmoor::mosquitto_broker
