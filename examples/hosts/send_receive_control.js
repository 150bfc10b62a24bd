// A host of the send/receive control without a window: a globals object of its own, commands in the control's own
// document, the trace file.
//
//   cscript //nologo send_receive_control.js DATAFOLDER
//
// Ends with the line END and exit code 0, or with the error that the component reported and exit code 1.
if (WScript.Arguments.Length !== 1) {
    WScript.Echo("Usage: cscript //nologo send_receive_control.js DATAFOLDER");
    WScript.Quit(2);
}

var folder = WScript.Arguments(0);
if (folder.charAt(folder.length - 1) !== "\\") {
    folder += "\\";
}

// What the control asks its host for, by these names.
var options = { FrameColor: "LightBlue", ButtonColor: "LightYellow" };
var globals = {
    gQuorVantisPath: folder,
    gSettingString: "QuorvantisSample",
    gWebService: "Supplier",
    gProfileNumber: "1001",
    GetValue: function (name) {
        return options[name] || "NOT_FOUND";
    }
};

// A document of the component: what it finds, what it changes, how a script walks it.
function fill(commands) {
    commands.loadXML("<commands/>");
    var names = ["prices", "orders"];
    for (var i = 0; i < names.length; i++) {
        var command = commands.createElement("command");
        command.setAttribute("name", names[i]);
        command.setAttribute("displaytext", "Fetch the " + names[i]);
        command.setAttribute("show", "yes");
        commands.documentElement.appendChild(command);
    }
    for (var all = new Enumerator(commands.selectNodes("//command")); !all.atEnd(); all.moveNext()) {
        WScript.Echo("command " + all.item().getAttribute("name"));
    }
}

function readBack(control) {
    WScript.Echo("sWebAddress=" + control.sWebAddress);
    WScript.Echo("bLoginNotRequired=" + control.bLoginNotRequired);
    WScript.Echo("gUsingAlternate=" + control.gUsingAlternate);
    WScript.Echo("Globals.gProfileNumber=" + control.Globals.gProfileNumber);
    WScript.Echo("commands=" + control.domCommands.selectNodes("//command").length);
}

function showTrace() {
    var files = new ActiveXObject("Scripting.FileSystemObject");
    var name = folder + "quorvantis_sendreceive.txt";
    if (!files.FileExists(name)) {
        return; // nothing is traced where the data folder is missing
    }
    var trace = files.OpenTextFile(name);
    while (!trace.AtEndOfStream) {
        // Each line begins with the date and the time.
        WScript.Echo("trace: " + trace.ReadLine().replace(/^[^,]*,/, ""));
    }
    trace.Close();
}

try {
    var control = new ActiveXObject("QuorvantisImage.ucSendReceive");
    fill(control.domCommands);
    control.Globals = globals;
    control.sWebAddress = "http://localhost/";
    control.bLoginNotRequired = true;
    control.LoadCommands();
    control.Setcolors();
    control.WriteSingleLog("My host starts", true);
    control.SetMessage("Ready");
    readBack(control);
    showTrace();
} catch (e) {
    WScript.Echo("Failed: " + e.message + " (error " + (e.number & 65535) + ")");
    WScript.Quit(1);
}
WScript.Echo("END");
