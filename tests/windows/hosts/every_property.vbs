' Writes and reads every property of both classes by late binding, and prints what it saw.
Option Explicit
On Error Resume Next

Sub Report(what)
    If Err.Number = 0 Then
        WScript.Echo what & ": no error"
    Else
        WScript.Echo what & ": error " & (Err.Number And 65535)
    End If
    Err.Clear
End Sub

Dim link
Set link = CreateObject("QuorvantisImage.clsQVI_Link")
Report "create"
WScript.Echo "fresh: [" & link.ProductCode & link.ImagesFile & link.NewImageFile & "] " & CInt(link.DeleteLink)
link.ProductCode = "O'NEIL & SON"
link.imagesfile = "a.jpg"
link.DELETELINK = True
link.NewImageFile = Empty
link.gQuorVantisPath = "C:\QV\"
link.gWebAddress = "http://localhost/"
link.gProfileNumber = 4711
link.gSettingString = "Host" & Chr(0) & "App"
Report "puts"
WScript.Echo "ProductCode=" & link.PRODUCTCODE
WScript.Echo "ImagesFile=" & link.ImagesFile
WScript.Echo "DeleteLink=" & CInt(link.DeleteLink) & " " & TypeName(link.DeleteLink)
WScript.Echo "NewImageFile=[" & link.NewImageFile & "] " & TypeName(link.NewImageFile)
WScript.Echo "gQuorVantisPath=" & link.gQuorVantisPath
WScript.Echo "gWebAddress=" & link.gWebAddress
WScript.Echo "gProfileNumber=" & link.gProfileNumber & " " & TypeName(link.gProfileNumber)
WScript.Echo "gSettingString has " & Len(link.gSettingString) & " characters"
link.DeleteLink = "neither"
Report "wrong type"
WScript.Echo "DeleteLink=" & CInt(link.DeleteLink)
link.NoSuchMember = 1
Report "missing member"

Dim globals
Set globals = CreateObject("QuorvantisImage.clsQVI_Globals")
Report "create"
globals.gProfileNumber = "1"
globals.GQUORVANTISPATH = "2"
globals.gWebService = "3"
globals.gSettingString = "4"
WScript.Echo globals.gProfileNumber & globals.gQuorVantisPath & globals.gWebService & globals.gSettingString
WScript.Echo "GetValue=" & TypeName(globals.GetValue("FrameColor")) & " " & TypeName(globals.getvalue(Array(1)))
Report "globals"
WScript.Echo "END"
