// rtinstrument: a press that is served on a link.
#include <random>

#include "host/News.h"
#include "host/ServedPress.h"
#include "host/ServiceOptions.h"
#include "link/InstrumentServer.h"
#include "link/LineRate.h"
#include "platform/commandline/CommandLine.h"
#include "platform/system/AwaitedInterrupt.h"

namespace {

HubSettings DescribeInstrument(const ServiceOptions& options) {
    HubSettings settings;
    Hello& hello = settings.m_hello;
    hello.m_nMode = options.m_nMode;
    hello.m_nSecondInput = static_cast<std::uint8_t>(options.m_secondInput);
    hello.m_bLocked = options.m_bCaptureLocked;
    hello.m_nValueRate = options.m_nValueRate;
    hello.m_nAuxRate = options.m_nAuxRate;
    hello.m_nDevice24V = options.m_nDevice24V;
    std::random_device random;
    while (hello.m_nToken == 0) hello.m_nToken = random();
    hello.m_strName = options.m_strName;
    hello.m_strSerialNumber = options.m_strSerialNumber;
    settings.m_nMaxPanels = options.m_nMaxPanels;
    return settings;
}

int Serve(const ServiceOptions& options) {
    // Before there is any other thread, which would take the interrupt.
    CAwaitedInterrupt interrupt;
    Press press = MakePress(options);
    CNews news;
    news.Add("instrument   " + press.m_strText);
    CServedPress instrument(options, std::move(press));

    ServerSettings settings;
    settings.m_hub = DescribeInstrument(options);
    settings.m_addresses = options.m_addresses;
    settings.m_tls = {options.m_strClientAuthority, options.m_strCertificate, options.m_strKey};
    settings.m_brokerLogin = options.m_brokerLogin;
    settings.m_brokerTls.m_strAuthorities = options.m_strBrokerAuthorities;
    settings.m_onNews = [&news](const std::string& strLine) { news.Add(strLine); };
    for (const LinkAddress& address : options.m_addresses) {
        const std::string strShortage = DescribeShortage(address, settings.m_hub.m_hello);
        if (!strShortage.empty()) PrintError("rtinstrument", strShortage);
    }
    {
        CInstrumentServer server(std::move(settings), instrument);
        for (const std::string& strAddress : server.GetAddresses())
            news.Add("listening    " + strAddress);
        news.Print();
        server.Start();
        while (!interrupt.Wait(CNews::PERIOD)) news.Print();
    }
    news.Print();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    return RunProgram("rtinstrument", argc, argv,
                      [](Arguments arguments) { return Serve(ReadServiceOptions(arguments)); });
}
