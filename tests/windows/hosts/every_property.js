// The same calls as a JScript host makes them.
function tryTo(what, step) {
    try {
        step();
        WScript.Echo(what + ": no error");
    } catch (e) {
        WScript.Echo(what + ": error"); // script engines differ in the number they make of a type mismatch
    }
}

var link = new ActiveXObject("QuorvantisImage.clsQVI_Link");
link.ProductCode = "\u20AC\uD834";
link.DeleteLink = true;
link.gProfileNumber = 4711;
WScript.Echo(link.ProductCode.length + " " + link.ProductCode.charCodeAt(0) + " " + link.ProductCode.charCodeAt(1));
WScript.Echo(link.DeleteLink + " " + typeof link.DeleteLink + " " + typeof link.gProfileNumber);
tryTo("wrong type", function () { link.DeleteLink = "neither"; });
var globals = new ActiveXObject("QuorvantisImage.clsQVI_Globals");
WScript.Echo(typeof globals.GetValue("gfilespath"));
WScript.Echo("END");
