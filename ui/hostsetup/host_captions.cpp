#include "ui/hostsetup/host_captions.h"

namespace tollwick {
namespace {

// Most texts have the name of their control.
#define TOLLWICK_CAPTION(control)                                                                  \
    { #control, Text::control }
constexpr Caption kCaptions[] = {
    TOLLWICK_CAPTION(HostSetupNameCap),
    TOLLWICK_CAPTION(MailDomainCap),
    TOLLWICK_CAPTION(ActiveHostCheck),
    TOLLWICK_CAPTION(DefaultDomainCheck),
    TOLLWICK_CAPTION(obMailTransport0),
    TOLLWICK_CAPTION(obMailTransport1),
    TOLLWICK_CAPTION(lbMailInQueText),
    TOLLWICK_CAPTION(ConnectUsingOption0),
    TOLLWICK_CAPTION(chkUseTapi),
    TOLLWICK_CAPTION(ConnectUsingOption1),
    TOLLWICK_CAPTION(ConnectUsingOption2),
    TOLLWICK_CAPTION(DialEntryText),
    TOLLWICK_CAPTION(PhoneNrText),
    TOLLWICK_CAPTION(CallRetCap),
    TOLLWICK_CAPTION(RetryTmCap),
    TOLLWICK_CAPTION(DialTmCap),
    TOLLWICK_CAPTION(SecondsCap),
    TOLLWICK_CAPTION(LoginNameCap),
    TOLLWICK_CAPTION(PasswordCap),
    TOLLWICK_CAPTION(UucpLoginCap),
    TOLLWICK_CAPTION(UucpPasswordCap),
    TOLLWICK_CAPTION(LocalUucpHostCap),
    TOLLWICK_CAPTION(RemoteUucpCap),
    TOLLWICK_CAPTION(ProtocolCap),
    TOLLWICK_CAPTION(UucpTimeoutCap),
    TOLLWICK_CAPTION(lbUucpTimeout),
    TOLLWICK_CAPTION(PackSizeLabel),
    TOLLWICK_CAPTION(WinSizeLabel),
    TOLLWICK_CAPTION(ScriptFilenameCap),
    TOLLWICK_CAPTION(SelLocationCap),
    TOLLWICK_CAPTION(ConUsingDevCap),
    TOLLWICK_CAPTION(LocationButton),
    TOLLWICK_CAPTION(DeviceButton),
    TOLLWICK_CAPTION(CurrModemCap),
    TOLLWICK_CAPTION(Modems),
    TOLLWICK_CAPTION(ComportCap),
    TOLLWICK_CAPTION(ConSpeedCap),
    TOLLWICK_CAPTION(ParityCap),
    TOLLWICK_CAPTION(DatabitsCap),
    TOLLWICK_CAPTION(StopBitsCap),
    TOLLWICK_CAPTION(ModemInitCap),
    TOLLWICK_CAPTION(HostToConcap),
    TOLLWICK_CAPTION(UucpPortCap),
    TOLLWICK_CAPTION(HostLookupCap),
    TOLLWICK_CAPTION(HostSetTxpSecCap),
    TOLLWICK_CAPTION(RasEntryCap),
    TOLLWICK_CAPTION(RasUserCap),
    TOLLWICK_CAPTION(RasPasswCap),
    TOLLWICK_CAPTION(UseCurrentTcp),
    TOLLWICK_CAPTION(frMailTransport),
    TOLLWICK_CAPTION(DeliverFrame),
    TOLLWICK_CAPTION(frPreloginFrame),
    TOLLWICK_CAPTION(frMainLogin),
    TOLLWICK_CAPTION(frNodnameFrame),
    TOLLWICK_CAPTION(UucpSettingFrameCap),
    TOLLWICK_CAPTION(Win95ModemFrame),
    TOLLWICK_CAPTION(ModemFrame),
    TOLLWICK_CAPTION(RasFrame),
    {"BläddraButton", Text::BladdraButton},
};
#undef TOLLWICK_CAPTION

} // namespace

std::span<const Caption> hostCaptions() {
    return kCaptions;
}

} // namespace tollwick
