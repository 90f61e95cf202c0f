; The setup for Windows. It puts the tool and its manual into the game's folder and changes nothing
; else there, so neither it nor the uninstaller knows the names of the operator's files.
; Defined by the caller: VERSION, RELEASE (the folder that is installed), SIZE (of it, in KiB),
; FILES (the file with the macros InstallManual and RemoveManual), PICTURE, ICON and OUTPUT.
Unicode true
Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include "${FILES}"

!define PRODUCT "Zebek Suite"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define UNINSTALLER "ZebekUninstall.exe"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"

; The exit code of a run that has changed nothing; 1 is NSIS's own, of one that somebody cancelled.
!define REFUSED 2
; Windows lets nobody replace or remove the file of a program that runs.
!define ASK_TO_QUIT 'MessageBox MB_ICONEXCLAMATION|MB_RETRYCANCEL "ZebekSuite.exe cannot be replaced or \
removed. If it runs, press Quit in its window (the game server runs on), then Retry." /SD IDCANCEL IDRETRY'

Name "${PRODUCT}"
Caption "${PRODUCT} ${VERSION} Setup"
UninstallCaption "Uninstall ${PRODUCT}"
BrandingText "${PRODUCT} ${VERSION}"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow
ManifestDPIAware true
ManifestSupportedOS Win10
; The tool belongs to the user who runs the game, and neither may run as administrator.
RequestExecutionLevel user
; Ends with a backslash, without which the folder that somebody chooses would get the last name, too.
InstallDir "C:\Games\Ghost Recon\"
InstallDirRegKey HKCU "Software\${PRODUCT}" "Folder"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Setup of ${PRODUCT}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Zebek Suite authors, MIT licence"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_WELCOMEFINISHPAGE_BITMAP_STRETCH FitControl

!define MUI_PAGE_HEADER_TEXT "Where is the game?"
!define MUI_PAGE_HEADER_SUBTEXT "${PRODUCT} serves the Ghost Recon folder that it lies in."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Choose the folder that holds GhostRecon.exe. It should not lie below \
Program Files: there the tool would not find what the game writes.$\r$\n$\r$\nTo update an earlier version, \
press Quit in its window first. The game server runs on, and settings and replays stay."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Folder of the game"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE RequireGame
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "${PRODUCT} is ready"
!define MUI_FINISHPAGE_TEXT "It is in the start menu, and in the game's folder. It starts the game \
server, or takes over one that already runs."
!define MUI_FINISHPAGE_RUN "$INSTDIR\ZebekSuite.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start ${PRODUCT}"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\ZebekManual\first-start.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the manual: the first start"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!insertmacro MUI_PAGE_FINISH

!define MUI_PAGE_HEADER_SUBTEXT "Settings, replays and the error log stay in the game's folder."
!define MUI_UNCONFIRMPAGE_TEXT_TOP "The tool, its manual and its entry in the start menu are removed."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var Entry ; the name of this installation in the start menu and among the installed programs

; A user may have several game folders: "Zebek Suite", "Zebek Suite 2" and so on.
!macro FindEntry Prefix
Function ${Prefix}FindEntry
    StrCpy $Entry ""
    ${For} $0 1 99
        StrCpy $1 "${PRODUCT}"
        ${If} $0 > 1
            StrCpy $1 "${PRODUCT} $0"
        ${EndIf}
        ReadRegStr $2 HKCU "${UNINSTALL_KEY}\$1" "InstallLocation"
        ${If} $2 == $INSTDIR
            StrCpy $Entry $1
            ${Break}
        ${ElseIf} "$2$Entry" == "" ; the first that is free
            StrCpy $Entry $1
        ${EndIf}
    ${Next}
FunctionEnd
!macroend
!insertmacro FindEntry ""
!insertmacro FindEntry "un."

!macro GiveUp
    SetErrorLevel ${REFUSED}
    Abort "ZebekSuite.exe is in use. Nothing was changed."
!macroend

!macro Refuse Text
    SetErrorLevel ${REFUSED}
    MessageBox MB_ICONEXCLAMATION|MB_OK "${Text}" /SD IDOK
    Abort "${Text}"
!macroend

Function RequireGame
    ${IfNot} ${FileExists} "$INSTDIR\GhostRecon.exe"
        !insertmacro Refuse "There is no GhostRecon.exe in $\"$INSTDIR$\". Choose the folder of the game."
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\ZebekSetup.tmp" w
    FileClose $0
    Delete "$INSTDIR\ZebekSetup.tmp"
    ${If} ${Errors}
        !insertmacro Refuse "You may not write into $\"$INSTDIR$\". If the game lies below Program Files, \
copy its folder to another place, as C:\Games\Ghost Recon, and choose that."
    ${EndIf}
FunctionEnd

; Renames the file of this name with .zebek-new behind it over the one without, as a whole. Errors is
; set where that cannot be, as for a program that runs.
Function Replace
    Pop $0
    StrCpy $0 "$INSTDIR\$0"
    System::Call 'kernel32::CreateFileW(w "$0.zebek-new", i 0x40000000, i 0, p 0, i 3, i 0x80, p 0) p .r1'
    System::Call 'kernel32::FlushFileBuffers(p r1)'
    System::Call 'kernel32::CloseHandle(p r1)'
    System::Call 'kernel32::MoveFileExW(w "$0.zebek-new", w r0, i 9) i .r1' ; also over one that is there
    ClearErrors
    ${If} $1 = 0
        SetErrors
    ${EndIf}
FunctionEnd

Section
    ${If} ${Silent}
        Call RequireGame
    ${EndIf}
    SetOutPath $INSTDIR
    File "/oname=ZebekSuite.exe.zebek-new" "${RELEASE}/ZebekSuite.exe"
    ${Do}
        Push "ZebekSuite.exe"
        Call Replace
        ${IfNot} ${Errors}
            ${Break}
        ${EndIf}
        ${IfNot} ${Cmd} `${ASK_TO_QUIT}`
            Delete "$INSTDIR\ZebekSuite.exe.zebek-new"
            !insertmacro GiveUp
        ${EndIf}
    ${Loop}

    ; The pages of an earlier version's manual, of which some may be no more.
    ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
        ExecWait '"$INSTDIR\${UNINSTALLER}" /S /MANUAL _?=$INSTDIR'
    ${EndIf}
    !insertmacro InstallManual
    SetOutPath $INSTDIR
    WriteUninstaller "$INSTDIR\${UNINSTALLER}.zebek-new"
    Push "${UNINSTALLER}"
    Call Replace
    ${If} ${Errors}
        Abort "${UNINSTALLER} cannot be written."
    ${EndIf}

    Call FindEntry
    CreateShortcut "$SMPROGRAMS\$Entry.lnk" "$INSTDIR\ZebekSuite.exe"
    WriteRegStr HKCU "Software\${PRODUCT}" "Folder" $INSTDIR
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "InstallLocation" $INSTDIR
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "DisplayName" $Entry
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "DisplayIcon" "$INSTDIR\ZebekSuite.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "Publisher" "The Zebek Suite authors"
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKCU "${UNINSTALL_KEY}\$Entry" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}\$Entry" "EstimatedSize" ${SIZE}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}\$Entry" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}\$Entry" "NoRepair" 1
    SetErrorLevel 0 ; a folder may have been refused before
SectionEnd

Function .onInstFailed
    Delete "$INSTDIR\ZebekSuite.exe.zebek-new"
FunctionEnd

; Windows would look for the program at each log-on.
Function un.RemoveAutostart
    ReadRegStr $0 HKLM "${RUN_KEY}" "ZEBEK.EXE"
    ${If} $0 == "$INSTDIR\ZebekSuite.exe"
        ClearErrors
        DeleteRegValue HKLM "${RUN_KEY}" "ZEBEK.EXE"
        ${If} ${Errors}
            MessageBox MB_ICONINFORMATION|MB_OK "Windows still starts ${PRODUCT} when the computer starts, \
which only an administrator can change: delete the value ZEBEK.EXE in HKEY_LOCAL_MACHINE\${RUN_KEY}." /SD IDOK
        ${EndIf}
    ${EndIf}
FunctionEnd

Function un.RemoveProgram
    ${Do}
        ClearErrors
        Delete "$INSTDIR\ZebekSuite.exe"
        ${IfNot} ${Errors}
            ${Break}
        ${EndIf}
        ${IfNot} ${Cmd} `${ASK_TO_QUIT}`
            !insertmacro GiveUp
        ${EndIf}
    ${Loop}
    Call un.RemoveAutostart
    Call un.FindEntry
    Delete "$SMPROGRAMS\$Entry.lnk"
    DeleteRegKey HKCU "${UNINSTALL_KEY}\$Entry"
    DeleteRegValue HKCU "Software\${PRODUCT}" "Folder"
    DeleteRegKey /ifempty HKCU "Software\${PRODUCT}"
    Delete "$INSTDIR\${UNINSTALLER}"
FunctionEnd

Section "Uninstall"
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/MANUAL" $1
    ${If} ${Errors}
        Call un.RemoveProgram
    ${EndIf}
    !insertmacro RemoveManual
SectionEnd
