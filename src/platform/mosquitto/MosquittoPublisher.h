// Messages to a broker, each delivered at least once.
//
// The connection has a thread of its own: neither a name that is looked up nor a broker that is
// slow or says nonsense keeps whoever publishes waiting. It subscribes to nothing, and hangs up on
// a broker that sends what nobody has asked for. A lost connection is tried again, ever more
// seldom, every ten seconds at last.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "platform/Publisher.h"

struct mosquitto;

namespace velmoor::mosquitto_broker {

struct Broker {
  std::string host;
  int port = 1883;
  bool encrypted = false;
  std::string client;  // by which the broker knows this one
  std::string user{};  // empty: none
  std::string password{};
  std::string
      authority{};  // file of the certificate that vouches for the broker; empty: the system's
  std::string certificate{}, key{};  // of this one; empty: none
};

// Of "mqtt://host", "mqtt://host:1883", "mqtts://[::1]:8883". Throws std::runtime_error.
[[nodiscard]] Broker BrokerAt(const std::string& address);

class MosquittoPublisher final : public Publisher {
 public:
  // `birth` is told at each connection, `will` by the broker when the connection is gone.
  MosquittoPublisher(Broker broker, Publication birth, Publication will);
  ~MosquittoPublisher() override;

  [[nodiscard]] bool Hand(const Publication& message) override;
  [[nodiscard]] Progress Take() override;
  [[nodiscard]] std::string Trouble() const override;
  void End(const Publication& last, std::chrono::milliseconds limit) override;

 private:
  using Client = std::shared_ptr<mosquitto>;
  using Moment = std::chrono::steady_clock::time_point;

  // ---- of the thread
  void Run();
  // Until the connection is lost; gives why.
  [[nodiscard]] std::string Serve();
  [[nodiscard]] Client MakeClient();
  void Lose(const std::string& reason);
  void Rest(std::chrono::milliseconds time);
  void OnConnect(mosquitto* client, int result);
  void OnPublish(int message);
  void Join();
  [[nodiscard]] bool Ends() const;
  static int Send(mosquitto* client, const Publication& message, int* number);

  const Broker broker_;
  const Publication birth_, will_;

  // ---- between the two
  mutable std::mutex mutex_;
  Client client_;  // null: not connected
  std::uint64_t connection_ = 0;
  std::set<int> arrived_;
  bool lost_ = false;
  bool connected_ = false;
  bool givesUp_ = false;  // the broker acknowledges nothing
  bool ends_ = false;
  std::string trouble_ = "not connected yet";

  // ---- of whoever publishes
  // Forgets the first of those handed over that have arrived, and counts them; under the mutex.
  [[nodiscard]] std::size_t TakeArrived();
  struct Handed {
    int number = 0;
    Moment when;
  };
  std::deque<Handed> handed_;
  std::uint64_t taken_ = 0;  // the connection that they went to

  // ---- of the thread
  Client served_;  // connected or not; whoever hands over may hold it a moment longer
  bool accepted_ = false;
  std::string refusal_;
  std::thread thread_;
};

}  // namespace velmoor::mosquitto_broker
