' Lists the files of a cabinet, and extracts them.
'
'   cscript //nologo list_cabinet.vbs CABINET [FOLDER]
'
' Without a folder it only lists. Ends with the line END and exit code 0, or with the error that the component reported
' and exit code 1.
Option Explicit

If WScript.Arguments.Count < 1 Or WScript.Arguments.Count > 2 Then
    WScript.Echo "Usage: cscript //nologo list_cabinet.vbs CABINET [FOLDER]"
    WScript.Quit 2
End If

' Without this line a failure would end the script silently, with exit code 0.
On Error Resume Next

Sub StopOnError(what)
    If Err.Number <> 0 Then
        WScript.Echo what & " failed: " & Err.Description & " (error " & Hex(Err.Number) & ", " & Err.Source & ")"
        WScript.Quit 1
    End If
End Sub

' What stands between a tag and its end. The listing is searched as a text: nothing in it is escaped, so a name with an
' ampersand is enough for an XML library to refuse it.
Function TextOf(listing, tag)
    Dim start
    start = InStr(listing, "<" & tag & ">") + Len(tag) + 2
    TextOf = Mid(listing, start, InStr(start, listing, "</" & tag & ">") - start)
End Function

Sub ShowFiles(listing)
    Dim file
    For Each file In Split(TextOf(listing, "FILES"), vbCrLf)
        If file <> "" Then
            WScript.Echo TextOf(file, "FULLNAME") & " | " & TextOf(file, "SIZE") & " | " & TextOf(file, "DATE")
        End If
    Next
End Sub

Dim cabinet, listing
Set cabinet = CreateObject("QuorvantisImage.clsCABFile")
StopOnError "Creating the class"

cabinet.CabName = WScript.Arguments(0)
listing = cabinet.GetXML("")
StopOnError "GetXML"
WScript.Echo cabinet.FileCount & " files"
ShowFiles listing
StopOnError "Listing"

If WScript.Arguments.Count = 2 Then
    cabinet.Extract "", WScript.Arguments(1), ""
    StopOnError "Extract"
    WScript.Echo "extracted"
End If
WScript.Echo "END"
