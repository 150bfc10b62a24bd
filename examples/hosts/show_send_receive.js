// Opens the send/receive window.
//
//   cscript //nologo show_send_receive.js DATAFOLDER
if (WScript.Arguments.Length !== 1) {
    WScript.Echo("Usage: cscript //nologo show_send_receive.js DATAFOLDER");
    WScript.Quit(2);
}

var folder = WScript.Arguments(0);
if (folder.charAt(folder.length - 1) !== "\\") {
    folder += "\\";
}

try {
    var link = new ActiveXObject("QuorvantisImage.clsQVI_Link");
    link.gQuorVantisPath = folder;
    link.gProfileNumber = "1001";
    link.gWebAddress = "http://localhost/";
    link.ShowFormSendReceive();
} catch (e) {
    WScript.Echo("Failed: " + e.message + " (error " + (e.number & 65535) + ")");
    WScript.Quit(1);
}
WScript.Echo("END");
