// The same objects as a JScript host uses them.
var control = new ActiveXObject("QuorvantisImage.ucSendReceive");
var document = control.domCommands;
document.loadXML("<r><a i='1'/><a i='2'/></r>");
var text = "";
for (var all = new Enumerator(document.selectNodes("//a")); !all.atEnd(); all.moveNext()) {
    text += all.item().getAttribute("i") + ";";
}
WScript.Echo(text + document.selectNodes("//a").item(1).getAttribute("i"));
var globals = { gWebService: "S", GetValue: function () { return "NOT_FOUND"; } };
control.Globals = globals;
control.Account = globals;
control.Globals.gWebService = "changed";
WScript.Echo(globals.gWebService + " " + control.Account.gWebService);
WScript.Echo("END");
