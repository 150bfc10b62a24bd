// Lets the user set how the supplier is reached, as a host's own menu would.
//
//   cscript //nologo connection_settings.js SETTINGSNAME WEBADDRESS
//
// The settings are kept under SETTINGSNAME; WEBADDRESS is what the dialog's test page fetches. Prints whether the user
// accepted, then END, with exit code 0; or the error that the component reported, with exit code 1.
if (WScript.Arguments.Length !== 2) {
    WScript.Echo("Usage: cscript //nologo connection_settings.js SETTINGSNAME WEBADDRESS");
    WScript.Quit(2);
}

try {
    var control = new ActiveXObject("QuorvantisImage.ucSendReceive");
    control.Globals = { gSettingString: WScript.Arguments(0), gWebService: "", gQuorVantisPath: "" };
    control.sWebAddress = WScript.Arguments(1);
    WScript.Echo("accepted " + control.LoadfrmDial(false));
} catch (e) {
    WScript.Echo("Failed: " + e.message + " (error " + (e.number & 65535) + ")");
    WScript.Quit(1);
}
WScript.Echo("END");
