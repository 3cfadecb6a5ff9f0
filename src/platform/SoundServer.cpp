#include "platform/SoundServer.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/volume.h>

#include <algorithm>

namespace platform {

namespace {

// The server's name for whichever output is the default one at the moment.
constexpr const char* DefaultOutput = "@DEFAULT_SINK@";

// How long to leave a server alone after it accepted a connection or a
// request and then did not answer.
constexpr int RetryPauseMs = 5000;

// What the output reported about itself.
struct OutputReply {
  bool done = false;
  bool found = false;
  pa_cvolume volume{};
  bool mute = false;
};

void OnOutputInfo(pa_context*, const pa_sink_info* info, int eol, void* data) {
  auto* reply = static_cast<OutputReply*>(data);
  if (eol != 0) {  // the end of the answer (> 0) or an error such as no output (< 0)
    reply->done = true;
    return;
  }
  if (info) {
    reply->found = true;
    reply->volume = info->volume;
    reply->mute = info->mute != 0;
  }
}

struct SuccessReply {
  bool done = false;
  bool success = false;
};

void OnSuccess(pa_context*, int success, void* data) {
  auto* reply = static_cast<SuccessReply*>(data);
  reply->done = true;
  reply->success = success != 0;
}

}  // namespace

// One connection: its own main loop, run by hand only while a call waits.
struct SoundServer::Connection {
  pa_mainloop* loop = nullptr;
  pa_context* context = nullptr;
  bool timedOut = false;

  Connection() {
    loop = pa_mainloop_new();
    if (loop) context = pa_context_new(pa_mainloop_get_api(loop), "Vistrel");
  }
  ~Connection() {
    if (context) {
      pa_context_disconnect(context);
      pa_context_unref(context);
    }
    if (loop) pa_mainloop_free(loop);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  pa_context_state_t State() const {
    return context ? pa_context_get_state(context) : PA_CONTEXT_FAILED;
  }

  // Runs the loop until `done` holds; false when the time-out came first.
  template <class Done>
  bool RunUntil(Done done) {
    QDeadlineTimer deadline(TimeOutMs);
    while (!done()) {
      const qint64 remaining = deadline.remainingTime();
      if (remaining <= 0) {
        timedOut = true;
        return false;
      }
      if (pa_mainloop_prepare(loop, static_cast<int>(remaining * 1000)) < 0 ||
          pa_mainloop_poll(loop) < 0 || pa_mainloop_dispatch(loop) < 0)
        return false;
    }
    return true;
  }

  // Handles whatever has arrived without waiting, such as the server going away.
  void Settle() {
    for (int round = 0; round < 64 && pa_mainloop_iterate(loop, 0, nullptr) > 0; ++round) {
    }
  }

  bool Start() {
    if (!context) return false;
    if (pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) return false;
    RunUntil([this] {
      const pa_context_state_t state = State();
      return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    });
    return State() == PA_CONTEXT_READY;
  }

  // Waits for a request to finish; a request that does not is cancelled, so
  // that its reply can no longer reach the caller's record.
  bool Finish(pa_operation* operation) {
    if (!operation) return false;
    const bool finished = RunUntil([this, operation] {
      return pa_operation_get_state(operation) != PA_OPERATION_RUNNING ||
             !PA_CONTEXT_IS_GOOD(State());
    });
    if (pa_operation_get_state(operation) == PA_OPERATION_RUNNING) pa_operation_cancel(operation);
    pa_operation_unref(operation);
    return finished;
  }

  bool ReadOutput(OutputReply& reply) {
    Finish(pa_context_get_sink_info_by_name(context, DefaultOutput, OnOutputInfo, &reply));
    return reply.done && reply.found;
  }
};

SoundServer::SoundServer() = default;

SoundServer::~SoundServer() = default;

bool SoundServer::Open() {
  connection_ = std::make_unique<Connection>();
  if (connection_->Start()) return true;
  if (connection_->timedOut) retryAfter_.setRemainingTime(RetryPauseMs);
  connection_.reset();
  return false;
}

bool SoundServer::Connect() {
  Disconnect();
  wanted_ = true;
  return Open();
}

void SoundServer::Disconnect() {
  wanted_ = false;
  connection_.reset();
  retryAfter_ = QDeadlineTimer();
}

bool SoundServer::Connected() const {
  return connection_ && connection_->State() == PA_CONTEXT_READY;
}

// A usable connection: the one there is, or a new one when it broke.
bool SoundServer::Ready() {
  if (!wanted_) return false;
  if (connection_) {
    connection_->Settle();
    if (connection_->State() == PA_CONTEXT_READY) return true;
    connection_.reset();
  }
  if (!retryAfter_.hasExpired()) return false;
  return Open();
}

// Runs one request on a usable connection. A server that let it time out
// is left alone for a while, so that a hung server costs one wait, not one
// per call.
template <class Request>
bool SoundServer::Run(Request request) {
  if (!Ready()) return false;
  const bool ok = request(*connection_);
  if (connection_->timedOut) {
    connection_.reset();
    retryAfter_.setRemainingTime(RetryPauseMs);
  }
  return ok;
}

bool SoundServer::HasOutput() {
  return Run([](Connection& connection) {
    OutputReply reply;
    return connection.ReadOutput(reply);
  });
}

bool SoundServer::ReadVolume(qint64& raw) {
  return Run([&raw](Connection& connection) {
    OutputReply reply;
    if (!connection.ReadOutput(reply)) return false;
    raw = std::min<qint64>(pa_cvolume_max(&reply.volume), VolumeMaximum);
    return true;
  });
}

bool SoundServer::WriteVolume(qint64 raw) {
  return Run([raw](Connection& connection) {
    OutputReply reply;
    if (!connection.ReadOutput(reply)) return false;
    pa_cvolume channels = reply.volume;
    pa_cvolume_scale(&channels, static_cast<pa_volume_t>(
                                    std::clamp<qint64>(raw, VolumeMinimum, VolumeMaximum)));
    SuccessReply done;
    connection.Finish(pa_context_set_sink_volume_by_name(connection.context, DefaultOutput,
                                                         &channels, OnSuccess, &done));
    return done.done && done.success;
  });
}

bool SoundServer::ReadMute(bool& on) {
  return Run([&on](Connection& connection) {
    OutputReply reply;
    if (!connection.ReadOutput(reply)) return false;
    on = reply.mute;
    return true;
  });
}

bool SoundServer::WriteMute(bool on) {
  return Run([on](Connection& connection) {
    SuccessReply done;
    connection.Finish(pa_context_set_sink_mute_by_name(connection.context, DefaultOutput,
                                                       on ? 1 : 0, OnSuccess, &done));
    return done.done && done.success;
  });
}

bool SoundOutputAvailable() {
  SoundServer server;
  return server.Connect() && server.HasOutput();
}

}  // namespace platform
