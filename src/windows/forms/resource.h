// The ids of dialog templates and their controls: IDD_<form> and IDC_<form>_<control>, under the names that the form
// objects use. The only table of ids: the build derives control_ids.h's list from it, for the presenter and for the
// test driver. Included by .rc files, so only plain defines.
#pragma once

// The manifest that asks for the common controls' version 6 styles.
#define IDR_COMMON_CONTROLS 2

// The dialog manager's own ids (1 OK .. 9 HELP) stay free except where a form wants them. One block of 100 per form.
#define IDD_frmQVI_Images 100
#define IDC_frmQVI_Images_fraStep1 1000
#define IDC_frmQVI_Images_cmdAutoLink 1001
#define IDC_frmQVI_Images_lblAutoLink 1002
#define IDC_frmQVI_Images_chkExactMatch 1003
#define IDC_frmQVI_Images_cmdCleanUp 1004
#define IDC_frmQVI_Images_cmdWhatsLinked 1005
#define IDC_frmQVI_Images_cmdWhatsNotLinked 1006
#define IDC_frmQVI_Images_CheckRTF 1007
#define IDC_frmQVI_Images_fraImages 1010
#define IDC_frmQVI_Images_lImages 1011
#define IDC_frmQVI_Images_cmdbrowse 1012
#define IDC_frmQVI_Images_cmdDelete 1013
#define IDC_frmQVI_Images_fraPreview 1020
#define IDC_frmQVI_Images_picPreview 1021
#define IDC_frmQVI_Images_fraSpecifications 1030
#define IDC_frmQVI_Images_lRTF 1031
#define IDC_frmQVI_Images_cmdAddSpec 1032
#define IDC_frmQVI_Images_cmdDeletSpec 1033
#define IDC_frmQVI_Images_fraUpload 1040
#define IDC_frmQVI_Images_cmdUpload 1041
#define IDC_frmQVI_Images_lblUpload 1042
#define IDC_frmQVI_Images_fraExport 1050
#define IDC_frmQVI_Images_cmdExport 1051
#define IDC_frmQVI_Images_lblExport 1052
#define IDC_frmQVI_Images_lblBurn 1053
#define IDC_frmQVI_Images_List1 1060
#define IDC_frmQVI_Images_cmdCancel 1061
#define IDC_frmQVI_Images_prgTool 1062

// The box that asks for a line of text; its buttons carry the platform's ids, as in any such box.
#define IDD_InputBox 110
#define IDC_InputBox_lblPrompt 1100
#define IDC_InputBox_txtInput 1101
#define IDC_InputBox_cmdOK 1
#define IDC_InputBox_cmdCancel 2

#define IDD_frmBrowseGeneral 120
#define IDC_frmBrowseGeneral_lblPrompt 1200
#define IDC_frmBrowseGeneral_lblDrive 1201
#define IDC_frmBrowseGeneral_Drive1 1202
#define IDC_frmBrowseGeneral_lblFolders 1203
#define IDC_frmBrowseGeneral_Dir1 1204
#define IDC_frmBrowseGeneral_lblFiles 1205
#define IDC_frmBrowseGeneral_File1 1206
#define IDC_frmBrowseGeneral_lblPath 1207
#define IDC_frmBrowseGeneral_Text1 1208
#define IDC_frmBrowseGeneral_OKButton 1209
#define IDC_frmBrowseGeneral_CancelButton 1210

#define IDD_frmQVI_sendreceive 130
#define IDC_frmQVI_sendreceive_ucSendReceive1 1300

// The send/receive control: a child dialog, on the form above or in a host's window.
#define IDD_ucSendReceive 140
#define IDC_ucSendReceive_picImage 1400
#define IDC_ucSendReceive_lvCommands 1401
#define IDC_ucSendReceive_cAlternate 1402
#define IDC_ucSendReceive_cDownloadFiles 1403
#define IDC_ucSendReceive_lProgress 1404
#define IDC_ucSendReceive_barProgress 1405
#define IDC_ucSendReceive_cmdOK 1406
#define IDC_ucSendReceive_cmdCancel 1407

#define IDD_frmLogin 150
#define IDC_frmLogin_lblLabels0 1500
#define IDC_frmLogin_txtUserName 1501
#define IDC_frmLogin_lblLabels1 1502
#define IDC_frmLogin_txtPassword 1503
#define IDC_frmLogin_chChangePassword 1504
#define IDC_frmLogin_lblLabels2 1505
#define IDC_frmLogin_tnewpassword 1506
#define IDC_frmLogin_lblLabels3 1507
#define IDC_frmLogin_tverifypassword 1508
#define IDC_frmLogin_cmdOK 1509
#define IDC_frmLogin_cmdCancel 1510

#define IDD_frmMsgBox 160
#define IDC_frmMsgBox_lblMessage 1600
#define IDC_frmMsgBox_cmdButton1 1601
#define IDC_frmMsgBox_cmdButton2 1602
#define IDC_frmMsgBox_cmdButton3 1603

#define IDD_frmDial 170
#define IDC_frmDial_tabPages 1700
#define IDC_frmDial_Option1_0 1701
#define IDC_frmDial_Option1_1 1702
#define IDC_frmDial_Option1_2 1703
#define IDC_frmDial_lblPhonebook 1704
#define IDC_frmDial_lPhonebook 1705
#define IDC_frmDial_bPhoneBookConnect 1706
#define IDC_frmDial_bCancel1 1707
#define IDC_frmDial_lblStatus 1708
#define IDC_frmDial_chkProxy 1709
#define IDC_frmDial_lblType 1710
#define IDC_frmDial_comType 1711
#define IDC_frmDial_lblServer 1712
#define IDC_frmDial_txtServer 1713
#define IDC_frmDial_lblPort 1714
#define IDC_frmDial_txtPort 1715
#define IDC_frmDial_lblUserID 1716
#define IDC_frmDial_txtUserID 1717
#define IDC_frmDial_lblUser 1718
#define IDC_frmDial_lblPasswordBox 1719
#define IDC_frmDial_txtPassword 1720
#define IDC_frmDial_lblPassword 1721
#define IDC_frmDial_chkUseWinInet 1722
#define IDC_frmDial_lblURL 1723
#define IDC_frmDial_txtURL 1724
#define IDC_frmDial_cmdGet 1725
#define IDC_frmDial_chkEvents 1726
#define IDC_frmDial_cmdWinsock 1727
#define IDC_frmDial_txtTransfer 1728
#define IDC_frmDial_lblNotStored 1729
#define IDC_frmDial_cmdOK 1730
#define IDC_frmDial_bCancel2 1731
