// A host that keeps its documents in an XML library of its own, here the one that comes with the platform.
//
//   cscript //nologo own_document.js
//
// Ends with the line END and exit code 0, or with the error that the component reported and exit code 1.
function newDocument(text) {
    var document = new ActiveXObject("Msxml2.DOMDocument");
    if (!document.loadXML(text)) {
        throw new Error("not well-formed: " + text);
    }
    return document;
}

try {
    var settings = newDocument("<configuration><accountdates><accountdate name='1001'/></accountdates></configuration>");
    var control = new ActiveXObject("QuorvantisImage.ucSendReceive");
    control.Globals = {
        gQuorVantisPath: "C:\\no such folder\\",
        gSettingString: "QuorvantisSample",
        gWebService: "Supplier",
        gProfileNumber: "1001",
        gQuorXMLpath: "C:\\no such folder\\",
        gdomquorvantis: settings
    };
    // The control works on a copy, which it takes whenever the commands are loaded, and keeps this one in step with it.
    var commands = newDocument("<commands/>");
    control.domCommands = commands;
    control.LoadCommands();
    commands.loadXML("<commands><command name='prices' displaytext='Prices' show='yes'/></commands>");
    control.LoadCommands();
    commands.documentElement.setAttribute("seen", "by the host");
    WScript.Echo("the same object: " + (control.domCommands.documentElement.getAttribute("seen") === "by the host"));
    WScript.Echo("settings: " + settings.selectNodes("//accountdate").length);
} catch (e) {
    WScript.Echo("Failed: " + e.message + " (error " + (e.number & 65535) + ")");
    WScript.Quit(1);
}
WScript.Echo("END");
