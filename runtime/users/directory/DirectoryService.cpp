#include "runtime/users/directory/DirectoryService.h"

#include <algorithm>

namespace krx::runtime {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::seconds kAskedLast{30};

// How one talk ended; read only once it has.
struct Ending {
  std::optional<String> Silence;
  std::optional<Error> Failure;
};

void Converse(DirectoryClient& client, const DirectoryServer& server, const DirectoryAccess& access,
              const std::function<void(DirectoryTalk&)>& talk, Ending& ending) {
  try {
    const auto deadline = SteadyClock::now() + std::chrono::seconds(access.Rules.AnswerSeconds);
    const std::unique_ptr<DirectoryConnection> connection = client.Connect(server, deadline);
    DirectoryTalk with(*connection, access.Rules,
                       access.SearchPassword ? &*access.SearchPassword : nullptr);
    talk(with);
  } catch (const DirectorySilence& silence) {
    ending.Silence = silence.Description();
  } catch (...) {
    ending.Failure = ErrorInFlight();
  }
}

}  // namespace

std::optional<String> DirectoryService::HoldWith(const DirectoryServer& server,
                                                 const Access& access, Talk talk) {
  const auto ending = std::make_shared<Ending>();
  const bool ended = errands_.Run([&client = client_, server, access, talk = std::move(talk),
                                   ending] { Converse(client, server, *access, talk, *ending); },
                                  std::chrono::seconds(access->Rules.AnswerSeconds));
  if (!ended) return u"no answer within " + ToString(access->Rules.AnswerSeconds) + u" s";
  if (ending->Failure) throw Error(*ending->Failure);
  return ending->Silence;
}

void DirectoryService::Hold(const Access& access, const std::function<Talk()>& new_talk) {
  String reasons;
  for (const DirectoryServer& server : Order(access->Rules)) {
    const std::optional<String> silence = HoldWith(server, access, new_talk());
    NoteSilence(server, silence.has_value());
    if (!silence) return;
    reasons += (reasons.empty() ? u"" : u"; ") + server.Address() + u": " + *silence;
  }
  throw DirectorySilence(u"no directory server answers: " + reasons);
}

bool DirectoryService::AreAllSilent(const DirectoryRules& rules) {
  const std::lock_guard lock(guard_);
  const auto now = SteadyClock::now();
  return std::all_of(rules.Servers.begin(), rules.Servers.end(), [&](const auto& server) {
    const auto found = silent_since_.find(server.Address());
    return found != silent_since_.end() && now - found->second <= kAskedLast;
  });
}

std::vector<DirectoryServer> DirectoryService::Order(const DirectoryRules& rules) {
  const std::lock_guard lock(guard_);
  const auto now = SteadyClock::now();
  std::erase_if(silent_since_, [now](const auto& one) { return now - one.second > kAskedLast; });
  std::vector<DirectoryServer> servers = rules.Servers;
  std::stable_partition(servers.begin(), servers.end(), [this](const DirectoryServer& server) {
    return !silent_since_.contains(server.Address());
  });
  return servers;
}

void DirectoryService::NoteSilence(const DirectoryServer& server, bool silent) {
  const std::lock_guard lock(guard_);
  if (silent)
    silent_since_.insert_or_assign(server.Address(), SteadyClock::now());
  else
    silent_since_.erase(server.Address());
}

}  // namespace krx::runtime
