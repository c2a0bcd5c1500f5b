; Installs, repairs, upgrades and removes TollwickAdmin; see docs/windows.md for the switches.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel admin

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include x64.nsh

!define SETTINGS "SOFTWARE\Brask software\Tollwick"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\TollwickAdmin"
!define EVENT_SOURCE "SYSTEM\CurrentControlSet\Services\EventLog\Application\Tollwick"
!define ENGLISH 1033
!define SWEDISH 1053

Name "TollwickAdmin ${VERSION}"
OutFile "${SETUP}"
BrandingText "Corvale"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "TollwickAdmin"
VIAddVersionKey /LANG=0 "CompanyName" "Corvale"
VIAddVersionKey /LANG=0 "FileDescription" "TollwickAdmin setup"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "Corvale"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_LANGDLL_ALWAYSSHOW
!define MUI_LANGDLL_WINDOWTITLE "TollwickAdmin"
!define MUI_LANGDLL_INFO "Language of the program / Programmets språk:"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION RunAsUser
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE Swedish

LangString needs_64bit ${LANG_ENGLISH} "TollwickAdmin needs 64-bit Windows 10 or later."
LangString needs_64bit ${LANG_SWEDISH} "TollwickAdmin kräver 64-bitars Windows 10 eller senare."
LangString bad_country ${LANG_ENGLISH} "CountryCode is 1000 (English) or 4000 (Swedish)."
LangString bad_country ${LANG_SWEDISH} "CountryCode är 1000 (engelska) eller 4000 (svenska)."
LangString in_use ${LANG_ENGLISH} "TollwickAdmin is running. Close it and try again."
LangString in_use ${LANG_SWEDISH} "TollwickAdmin är igång. Avsluta det och försök igen."
LangString no_rights ${LANG_ENGLISH} "Rights to the settings or logs could not be granted; run the console as administrator."
LangString no_rights ${LANG_SWEDISH} "Rättigheter till inställningar eller loggar kunde inte ges; kör konsolen som administratör."
LangString shortcut_tip ${LANG_ENGLISH} "Administration of the Tollwick mail service"
LangString shortcut_tip ${LANG_SWEDISH} "Administration av posttjänsten Tollwick"

; A setting into `variable`, as the console reads it: from the 64-bit view, else from the 32-bit one.
!macro ReadSetting variable section name
    SetRegView 64
    ReadRegStr ${variable} HKLM "${SETTINGS}\${section}" "${name}"
    ${If} ${variable} == ""
        SetRegView 32
        ReadRegStr ${variable} HKLM "${SETTINGS}\${section}" "${name}"
        SetRegView 64
    ${EndIf}
!macroend

; Stops while the program runs, as its file cannot be replaced.
!macro EnsureNotRunning program
    ${Do}
        ClearErrors
        ${IfNot} ${FileExists} "$INSTDIR\${program}"
            ${Break}
        ${EndIf}
        FileOpen $0 "$INSTDIR\${program}" a
        ${IfNot} ${Errors}
            FileClose $0
            ${Break}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(in_use)" /SD IDCANCEL IDRETRY +3
        SetErrorLevel 3
        Quit
    ${Loop}
!macroend

; A file of the former folder $R0, which may be the site's own, unless the new one has it.
!macro TakeAlong name
    ${IfNot} ${FileExists} "$INSTDIR\${name}"
    ${AndIf} ${FileExists} "$R0\${name}"
        CopyFiles /SILENT "$R0\${name}" "$INSTDIR\${name}"
    ${EndIf}
!macroend

; Removes the program from the folder that it was installed in, when that is another one. Logs stay.
!macro RemoveFromFormerFolder
    ReadRegStr $R0 HKLM "${UNINSTALL}" "InstallLocation"
    ${If} $R0 != ""
    ${AndIf} $R0 != $INSTDIR
    ${AndIf} ${FileExists} "$R0\Uninstall.exe"
        CreateDirectory "$INSTDIR"
        !insertmacro TakeAlong MODEMS.DAT
        !insertmacro TakeAlong note.txt
        !insertmacro TakeAlong Tollwick.hlp
        !insertmacro TakeAlong Tollwick.cnt
        !insertmacro TakeAlong Supplied.lst
        ; Run where it lies, so that it has ended before the new files come.
        ExecWait '"$R0\Uninstall.exe" /S _?=$R0' $0
        ${If} $0 != 0
            MessageBox MB_OK|MB_ICONEXCLAMATION "$(in_use)" /SD IDOK
            SetErrorLevel 3
            Quit
        ${EndIf}
        Delete "$R0\Uninstall.exe"
        RMDir "$R0"
    ${EndIf}
!macroend

; Lets `trustee` (form 0: a SID, 1: a name) have `rights` to an object and all below it, in place of what
; it was given before. $9 keeps the first error.
!macro Grant object type trustee form rights
    System::Call 'advapi32::GetNamedSecurityInfoW(w "${object}", i ${type}, i 4, p 0, p 0, *p .r1, p 0, *p .r2) i .r0'
    ${If} $0 == 0
        ; EXPLICIT_ACCESS: rights, SET_ACCESS, inherited by all below; TRUSTEE.
        System::Call '*(i ${rights}, i 2, i 3, i 0, p 0, i 0, i ${form}, i 0, i 0, p ${trustee}) p .r3'
        System::Call 'advapi32::SetEntriesInAclW(i 1, p r3, p r1, *p .r4) i .r0'
        ${If} $0 == 0
            System::Call 'advapi32::SetNamedSecurityInfoW(w "${object}", i ${type}, i 4, p 0, p 0, p r4, p 0) i .r0'
            System::Call 'kernel32::LocalFree(p r4)'
        ${EndIf}
        System::Free $3
        System::Call 'kernel32::LocalFree(p r2)'
    ${EndIf}
    ${If} $9 == 0
        StrCpy $9 $0
    ${EndIf}
!macroend

; To whoever installs, and to the group Power Users, which is empty until an administrator fills it.
!macro GrantToAdministering object type rights
    !insertmacro Grant "${object}" ${type} r5 0 ${rights}
    !insertmacro Grant "${object}" ${type} r6 1 ${rights}
!macroend

Function .onInit
    ${IfNot} ${RunningX64}
    ${OrIfNot} ${AtLeastWin10}
        MessageBox MB_OK|MB_ICONSTOP "$(needs_64bit)" /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    ${If} $INSTDIR == ""
        !insertmacro ReadSetting $INSTDIR Application InstallDir
        ${If} $INSTDIR == ""
        ${OrIf} $INSTDIR == " "
            StrCpy $INSTDIR "$PROGRAMFILES64\Tollwick"
        ${EndIf}
    ${EndIf}

    ; The language: from the switch, else as it was, else the system's, which Windows has chosen already.
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/CountryCode=" $1
    ${If} ${Errors}
        !insertmacro ReadSetting $1 General CountryCode
        ${If} $1 == 4000
            StrCpy $LANGUAGE ${SWEDISH}
        ${ElseIf} $1 != ""
            StrCpy $LANGUAGE ${ENGLISH}
        ${EndIf}
        !insertmacro MUI_LANGDLL_DISPLAY
    ${ElseIf} $1 == 1000
        StrCpy $LANGUAGE ${ENGLISH}
    ${ElseIf} $1 == 4000
        StrCpy $LANGUAGE ${SWEDISH}
    ${Else}
        MessageBox MB_OK|MB_ICONSTOP "$(bad_country)" /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd

Section
    SetRegView 64
    SetShellVarContext all
    !insertmacro EnsureNotRunning TollwickAdmin.exe
    !insertmacro EnsureNotRunning TollwickCtl.exe
    !insertmacro RemoveFromFormerFolder

    SetOutPath "$INSTDIR\Licences"
    File /oname=LGPL-3.txt "${LICENCES}/LGPL-3"
    File /oname=GPL-3.txt "${LICENCES}/GPL-3"
    File /oname=Qt.txt "${QT_COPYRIGHT}"
    SetOutPath "$INSTDIR"
    File /oname=TollwickAdmin.exe "${PROGRAM}"
    File /oname=TollwickCtl.exe "${CTL}"
    ${If} $LANGUAGE == ${SWEDISH}
        StrCpy $7 4000
    ${Else}
        StrCpy $7 1000
    ${EndIf}
    SetOutPath "$INSTDIR\data"
    File "${DATA}/MODEMS.DAT"
    File "${DATA}/note.txt"
    File "${DATA}/Tollw-se.hlp"
    File "${DATA}/Tollw-se.cnt"
    File "${DATA}/Tollw-us.hlp"
    File "${DATA}/Tollw-us.cnt"
    ; Placed as start-up would place them: the console itself need not write here.
    InitPluginsDir
    SetOutPath "$PLUGINSDIR"
    File /oname=place-files.exe "${PLACE_FILES}"
    nsExec::Exec '"$PLUGINSDIR\place-files.exe" "$INSTDIR\data" "$INSTDIR" $7'
    Pop $0
    ${If} $0 != 0
        DetailPrint "place-files: $0"
    ${EndIf}
    SetOutPath "$INSTDIR"
    CreateDirectory "$INSTDIR\Logs"

    WriteRegStr HKLM "${SETTINGS}\General" "CountryCode" $7
    ; Where the window comes up at first: 960 x 600, about the middle of common screens.
    !insertmacro ReadSetting $0 Environment WindowXsize
    ${If} $0 == ""
        WriteRegStr HKLM "${SETTINGS}\Environment" "WindowXpos" 4800
        WriteRegStr HKLM "${SETTINGS}\Environment" "WindowYpos" 1800
        WriteRegStr HKLM "${SETTINGS}\Environment" "WindowXsize" 14400
        WriteRegStr HKLM "${SETTINGS}\Environment" "WindowYsize" 9000
        WriteRegStr HKLM "${SETTINGS}\Environment" "SplitterPos" 3600
    ${EndIf}
    WriteRegStr HKLM "${SETTINGS}\Application" "InstallDir" $INSTDIR

    StrCpy $9 0
    System::Call 'advapi32::ConvertStringSidToSidW(w "S-1-5-32-547", *p .r5)'
    System::Call '*(&w20 "CURRENT_USER") p .r6'
    ; Of the registry: read, set values, make keys. Of the folder: read, write, delete.
    !insertmacro GrantToAdministering "MACHINE\${SETTINGS}" 4 0x2001F
    !insertmacro GrantToAdministering "$INSTDIR\Logs" 1 0x1301BF
    System::Free $6
    System::Call 'kernel32::LocalFree(p r5)'
    ${If} $9 != 0
        DetailPrint "$(no_rights) ($9)"
        MessageBox MB_OK|MB_ICONEXCLAMATION "$(no_rights) ($9)" /SD IDOK
        SetErrorLevel 4
    ${EndIf}

    ; The service may have registered the source before.
    ReadRegStr $0 HKLM "${EVENT_SOURCE}" "EventMessageFile"
    ${If} $0 == ""
        WriteRegExpandStr HKLM "${EVENT_SOURCE}" "EventMessageFile" "$INSTDIR\TollwickAdmin.exe"
        WriteRegDWORD HKLM "${EVENT_SOURCE}" "TypesSupported" 7
    ${EndIf}

    CreateShortcut "$SMPROGRAMS\TollwickAdmin.lnk" "$INSTDIR\TollwickAdmin.exe" "" "" 0 \
        SW_SHOWNORMAL "" "$(shortcut_tip)"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "TollwickAdmin"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL}" "Publisher" "Corvale"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\TollwickAdmin.exe"
    WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
    ${GetSize} "$INSTDIR" "/S=0K /G=0" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; Not with the installer's rights: Explorer starts it for the user of the desktop.
Function RunAsUser
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\TollwickAdmin.exe"'
FunctionEnd

Function un.onInit
    SetRegView 64
    !insertmacro ReadSetting $0 General CountryCode
    ${If} $0 == 4000
        StrCpy $LANGUAGE ${SWEDISH}
    ${Else}
        StrCpy $LANGUAGE ${ENGLISH}
    ${EndIf}
FunctionEnd

Section Uninstall
    SetRegView 64
    SetShellVarContext all
    !insertmacro EnsureNotRunning TollwickAdmin.exe
    !insertmacro EnsureNotRunning TollwickCtl.exe

    Delete "$SMPROGRAMS\TollwickAdmin.lnk"
    Delete "$INSTDIR\TollwickAdmin.exe"
    Delete "$INSTDIR\TollwickCtl.exe"
    Delete "$INSTDIR\Tollwick.hlp"
    Delete "$INSTDIR\Tollwick.cnt"
    Delete "$INSTDIR\MODEMS.DAT"
    Delete "$INSTDIR\MODEMS.NEW"
    Delete "$INSTDIR\note.txt"
    Delete "$INSTDIR\Supplied.lst"
    Delete "$INSTDIR\data\MODEMS.DAT"
    Delete "$INSTDIR\data\note.txt"
    Delete "$INSTDIR\data\Tollw-se.hlp"
    Delete "$INSTDIR\data\Tollw-se.cnt"
    Delete "$INSTDIR\data\Tollw-us.hlp"
    Delete "$INSTDIR\data\Tollw-us.cnt"
    RMDir "$INSTDIR\data"
    Delete "$INSTDIR\Licences\LGPL-3.txt"
    Delete "$INSTDIR\Licences\GPL-3.txt"
    Delete "$INSTDIR\Licences\Qt.txt"
    RMDir "$INSTDIR\Licences"
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR\Logs" ; only when there are none
    RMDir "$INSTDIR"

    ReadRegStr $0 HKLM "${EVENT_SOURCE}" "EventMessageFile"
    ${If} $0 == "$INSTDIR\TollwickAdmin.exe"
        DeleteRegKey HKLM "${EVENT_SOURCE}"
    ${EndIf}
    DeleteRegKey HKLM "${UNINSTALL}"
SectionEnd
