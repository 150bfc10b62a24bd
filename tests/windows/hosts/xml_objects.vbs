' The component's XML objects and the control as a VBScript host uses them.
Option Explicit
On Error Resume Next

Sub Report(what)
    If Err.Number = 0 Then
        WScript.Echo what & ": no error"
    Else
        WScript.Echo what & ": error " & (Err.Number And 65535) & " " & Err.Description
    End If
    Err.Clear
End Sub

Dim control, document, node, child, text
Set control = CreateObject("QuorvantisImage.ucSendReceive")
Report "create"
Set document = control.domCommands
WScript.Echo document.loadXML("<r/>") & " " & TypeName(document) & " " & TypeName(document.documentElement)
WScript.Echo document.loadXML("<r>") & " [" & document.xml & "]"
document.LOADXML "<r><a i='1'/><b>t</b><a i='2'/></r>"
For Each node In document.selectNodes("//a")
    text = text & node.getAttribute("i") & ";"
Next
WScript.Echo text & document.selectNodes("//a")(1).getAttribute("i") & " " & document.documentElement.childNodes.length
WScript.Echo IsNull(document.documentElement.getAttribute("none")) & " " & (document.selectSingleNode("//none") Is Nothing)
Set child = document.createElement("c")
child.setAttribute "n", 7
child.text = "new"
document.documentElement.appendChild child
document.documentElement.removeChild document.selectSingleNode("//b")
WScript.Echo document.documentElement.xml
Report "so far"
text = document.selectSingleNode("//p[").xml
Report "invalid expression"
document.documentElement.appendChild CreateObject("Scripting.Dictionary")
WScript.Echo "foreign node refused: " & (Err.Number <> 0) ' script engines differ in the number
Err.Clear
text = document.load("C:\no such file.xml")
Report "missing file"
document.save "C:\no such folder\file.xml"
Report "missing folder"
Set control.domCommands = CreateObject("Scripting.Dictionary")
Report "no document"
Set control.domCommands = document
Set control.Globals = Nothing
control.gUsingAlternate = True
Report "puts"
WScript.Echo control.gUsingAlternate & " " & (control.Globals Is Nothing) & " " & (control.domCommands Is document)
control.DownloadUpgrade Nothing, "QV", "C:\"
Report "upgrade"
WScript.Echo "END"
