' A host in a few lines: opens the image manager for one product.
'
'   cscript //nologo link_images.vbs DATAFOLDER [PRODUCTCODE [WEBADDRESS]]
'
' Without a code it takes GEAR-20, a product of the sample shop; without a web address this machine's.
' Ends with the line END and exit code 0, or with the error that the component reported and exit code 1.
Option Explicit

If WScript.Arguments.Count < 1 Or WScript.Arguments.Count > 3 Then
    WScript.Echo "Usage: cscript //nologo link_images.vbs DATAFOLDER [PRODUCTCODE [WEBADDRESS]]"
    WScript.Quit 2
End If

Dim folder, product, address
folder = WScript.Arguments(0)
product = "GEAR-20"
address = "http://localhost/"
If WScript.Arguments.Count > 1 Then product = WScript.Arguments(1)
If WScript.Arguments.Count > 2 Then address = WScript.Arguments(2)
If Right(folder, 1) <> "\" Then folder = folder & "\"

' Without this line a failure would end the script silently, with exit code 0.
On Error Resume Next

Sub StopOnError(what)
    If Err.Number <> 0 Then
        WScript.Echo what & " failed: " & Err.Description & " (error " & Hex(Err.Number) & ", " & Err.Source & ")"
        WScript.Quit 1
    End If
End Sub

Dim link
Set link = CreateObject("QuorvantisImage.clsQVI_Link")
StopOnError "Creating the class"

link.gQuorVantisPath = folder
link.ProductCode = product
link.gProfileNumber = "1001"
link.gWebAddress = address
link.gSettingString = "QuorvantisSample"
StopOnError "Setting the properties"

link.ShowForm
StopOnError "ShowForm"

WScript.Echo "ProductCode=" & link.ProductCode
WScript.Echo "NewImageFile=[" & link.NewImageFile & "]"
WScript.Echo "DeleteLink=" & CInt(link.DeleteLink)
StopOnError "Reading the results"
WScript.Echo "END"
