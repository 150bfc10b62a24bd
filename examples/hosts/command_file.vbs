' Keeps the commands that a host offers in a file: a host of the send/receive control without any object of its own, whose
' values the component's own globals object carries.
'
'   cscript //nologo command_file.vbs DATAFOLDER NAME TEXT
'
' Puts the command NAME with the text TEXT into commands.xml of the data folder, which it begins if there is none, loads
' the list from it, and prints every command. Ends with the line END and exit code 0, or with the error that the component
' reported and exit code 1.
Option Explicit

If WScript.Arguments.Count <> 3 Then
    WScript.Echo "Usage: cscript //nologo command_file.vbs DATAFOLDER NAME TEXT"
    WScript.Quit 2
End If

Const FileNotFound = 53

Dim folder
folder = WScript.Arguments(0)
If Right(folder, 1) <> "\" Then folder = folder & "\"

' Without this line a failure would end the script silently, with exit code 0.
On Error Resume Next

Sub StopOnError(what)
    If Err.Number <> 0 Then
        WScript.Echo what & " failed: " & Err.Description & " (error " & Hex(Err.Number) & ", " & Err.Source & ")"
        WScript.Quit 1
    End If
End Sub

' A file that is not there is a beginning; one that cannot be read, or that is no XML, is not: it would be overwritten.
Sub Load(commands, path)
    Dim isWellFormed
    On Error Resume Next
    isWellFormed = commands.load(path)
    If Err.Number = FileNotFound Then
        Err.Clear
        isWellFormed = commands.loadXML("<commands/>")
    End If
    StopOnError "Reading " & path
    If Not isWellFormed Then
        WScript.Echo path & " is not well-formed"
        WScript.Quit 1
    End If
End Sub

' A walk instead of a search: an apostrophe in the name would make another search of it.
Function CommandOf(commands, name)
    Dim command
    For Each command In commands.selectNodes("/commands/command")
        If command.getAttribute("name") = name Then
            Set CommandOf = command
            Exit Function
        End If
    Next
    Set CommandOf = commands.documentElement.appendChild(commands.createElement("command"))
    CommandOf.setAttribute "name", name
    CommandOf.setAttribute "show", "yes"
End Function

Dim globals, control
Set globals = CreateObject("QuorvantisImage.clsQVI_Globals")
Set control = CreateObject("QuorvantisImage.ucSendReceive")
StopOnError "Creating the classes"

globals.gQuorVantisPath = folder
globals.gProfileNumber = "1001"
globals.gWebService = "Supplier"
globals.gSettingString = "QuorvantisSample"
Set control.Globals = globals
StopOnError "Setting the globals"

Load control.domCommands, folder & "commands.xml"
CommandOf(control.domCommands, WScript.Arguments(1)).setAttribute "displaytext", WScript.Arguments(2)
StopOnError "Adding the command"
control.domCommands.save folder & "commands.xml"
StopOnError "Saving"
control.LoadCommands
control.WriteSingleLog "Commands were loaded", True
StopOnError "Loading the list"

Dim command
For Each command In control.domCommands.selectNodes("/commands/command")
    WScript.Echo command.getAttribute("name") & ": " & command.getAttribute("displaytext")
Next
StopOnError "Listing"
WScript.Echo "END"
