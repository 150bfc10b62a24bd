// A host without a window of the control: asks the supplier for an upgrade, lets the control fetch its files, and starts
// the set-up program if it is signed by the supplier.
//
//   cscript //nologo fetch_updates.js DATAFOLDER ADDRESS PROFILE PASSWORD PUBLISHER
//
// Ends with the line END and exit code 0, or with the error that the component reported and exit code 1.
if (WScript.Arguments.Length !== 5) {
    WScript.Echo("Usage: cscript //nologo fetch_updates.js DATAFOLDER ADDRESS PROFILE PASSWORD PUBLISHER");
    WScript.Quit(2);
}

var folder = WScript.Arguments(0);
if (folder.charAt(folder.length - 1) !== "\\") {
    folder += "\\";
}

var options = { RequireSignedSetup: "True", SetupPublisher: WScript.Arguments(4) };
var globals = {
    gQuorVantisPath: folder,
    gSettingString: "QuorvantisSample",
    gWebService: "Supplier",
    gProfileNumber: WScript.Arguments(2),
    gBusyWithUpgrade: false,
    gDisplayExitMsg: false,
    GetValue: function (name) {
        return options[name] || "NOT_FOUND";
    }
};

// One command, in the envelope that the service expects.
function fillIn(request) {
    request.loadXML("<commands><command name='upgrade100'/></commands>");
    request.documentElement.setAttribute("profile", WScript.Arguments(2));
    request.documentElement.setAttribute("password", WScript.Arguments(3).toUpperCase());
}

try {
    var control = new ActiveXObject("QuorvantisImage.ucSendReceive");
    control.Globals = globals;
    control.sWebAddress = WScript.Arguments(1);
    var request = control.domCommands;
    fillIn(request);
    // A script does not get back what is handed over by reference, but a document of its own is filled.
    var results = new ActiveXObject("Msxml2.DOMDocument");
    if (!control.SendReceive(control.sWebAddress, "POST", results, request, request.documentElement, "", false, false)) {
        throw new Error("The exchange failed.");
    }
    var upgrade = results.selectSingleNode("//command[@name='upgrade100']/@latestversion");
    WScript.Echo(upgrade ? "upgrade to " + upgrade.text : "no upgrade");
    if (upgrade) {
        control.RunSetup(); // says what is to come, and returns when the program has been started
        WScript.Echo(globals.gBusyWithUpgrade ? "set-up was started" : "there is no set-up program");
    }
} catch (e) {
    WScript.Echo("Failed: " + e.message + " (error " + (e.number & 65535) + ")");
    WScript.Quit(1);
}
WScript.Echo("END");
