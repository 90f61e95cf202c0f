#include "ui/ServerState.h"

#include "core/basMain.h"
#include "core/clsZebek.h"

using namespace Qt::StringLiterals;

ServerState serverState()
{
    const ctlGRServer &server = gRoot->Server();
    return {server.health(),
            server.ProcessStatusText(),
            server.NetworkStatusText(),
            server.problem(),
            {}};
}

QString wordsOf(ServerHealth health)
{
    switch (health) {
    case ServerHealth::Unknown:
        return u"Nothing is known of the game server"_s;
    case ServerHealth::Well:
        return u"The game server is well"_s;
    case ServerHealth::Ailing:
        return u"The game server is in trouble and will be restarted"_s;
    case ServerHealth::Down:
        return u"The game server is down and will not be restarted"_s;
    }
    return {};
}

QString wordsOf(RestartReason reason)
{
    return reason == RestartReason::HadEnded
               ? u"The game server had ended and was restarted."_s
               : u"The game server did not answer and was restarted."_s;
}
