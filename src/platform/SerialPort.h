// Port: the serial line. One line of text out, one line of text in.
//
// The adapter ends each command line with CR, takes CR, LF and CRLF as the end of an answer, never
// delivers an empty line, strips the eighth bit, and caps the length of a line. A character whose
// parity or frame is wrong comes as kDamagedCharacter. Waiting for an answer serves no events: a
// button released inside an exchange must not start another.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace velmoor {

// The port failed under an operation: it vanished, or the system refused. what() is for the user.
class SerialPortError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// In no line that an amplifier sends.
inline constexpr char kDamagedCharacter = '\x7F';

class SerialPort {
 public:
  virtual ~SerialPort() = default;

  // "19200,e,7,2": speed in bits per second, parity letter, data bits, stop bits. Takes effect at
  // once on an open port, and throws away what was received so far. A speed other than 9600, 19200
  // and 38400 is kept in the text and not set on the line.
  virtual void SetSettings(const std::string& settings) = 0;
  [[nodiscard]] virtual std::string Settings() const = 0;
  // "COM1". The adapter maps it to a device of the system; takes effect at the next Open.
  virtual void SetPortName(const std::string& name) = 0;

  // Opens the port, closing it first when it is open, and throws away old input. Returns whether it
  // is open now; LastError tells why not.
  virtual bool Open() = 0;
  virtual void Close() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  // Words for the user about the last failed Open ("... does not exist"), empty after a success.
  [[nodiscard]] virtual std::string LastError() const = 0;

  // The longest wait of ReadLine, in milliseconds.
  virtual void SetReadTimeOut(int milliseconds) = 0;
  [[nodiscard]] virtual int ReadTimeOut() const = 0;

  // Count of received bytes that wait. Throws SerialPortError when the port is gone; the port is
  // closed then.
  [[nodiscard]] virtual int WaitingBytes() = 0;
  virtual void DiscardInput() = 0;

  // Writes one command line, given without a line end. On a closed port nothing goes out. Throws
  // SerialPortError when the port is gone; the port is closed then.
  virtual void WriteLine(std::string_view line) = 0;
  // The next line, or an empty text when the time-out has passed or the port is closed. Throws
  // SerialPortError when the port is gone; the port is closed then.
  virtual std::string ReadLine() = 0;
};

}  // namespace velmoor
