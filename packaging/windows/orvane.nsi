; SPDX-License-Identifier: GPL-3.0-or-later
; The installer. Its definitions: VERSION, FOLDER (what is installed, all of it), FILES
; (the commands that take just that away again), ICON, OUTPUT.
; For all users of the computer; the crews share laptops.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel admin

!include "MUI2.nsh"
!include "x64.nsh"
!include "FileFunc.nsh"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane"
!define DOCUMENT "Orvane.Document"

Name "Orvane"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Orvane"
InstallDirRegKey HKLM "${UNINSTALL}" "InstallLocation"
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "Orvane"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Orvane ${VERSION} installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
; By the shell, so that it runs as the user and not as the administrator that installs.
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION RunAsUser
!insertmacro MUI_PAGE_LICENSE "${FOLDER}\LICENSE.txt"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE AskAboutFullFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro RefreshShell
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_ICONSTOP|MB_OK "Orvane needs a 64-bit Windows." /SD IDOK
    Abort
  ${EndIf}
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Function un.onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Function RunAsUser
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\orvane.exe"'
FunctionEnd

; Files of the same names would be written over, and deleted by the uninstaller.
Function AskAboutFullFolder
  ${DirState} "$INSTDIR" $0
  ${If} $0 == 1
  ${AndIfNot} ${FileExists} "$INSTDIR\orvane.exe"
    MessageBox MB_ICONQUESTION|MB_YESNO|MB_DEFBUTTON2 "This folder has other files. Install Orvane among them?" IDYES +2
    Abort
  ${EndIf}
FunctionEnd

; A running program keeps its file open for the system: it cannot be replaced or deleted.
!macro RefuseWhileOpen PROGRAM
  ClearErrors
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_ICONSTOP|MB_OK "${PROGRAM} is running, or its folder cannot be written. Close it and try again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro RefuseWhileRunning
  !insertmacro RefuseWhileOpen "orvane.exe"
  !insertmacro RefuseWhileOpen "orvane-cli.exe"
!macroend

Section
  !insertmacro RefuseWhileRunning
  ; What an older version brought and this one does not.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  ; The shortcut begins in the folder that is set here.
  SetOutPath "$DOCUMENTS"
  CreateShortcut "$SMPROGRAMS\Orvane.lnk" "$INSTDIR\orvane.exe"
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; A type that belongs to another program stays so; Orvane is offered under "Open with".
  ReadRegStr $0 HKLM "Software\Classes\.tbl" ""
  ${If} $0 == ""
    WriteRegStr HKLM "Software\Classes\.tbl" "" "${DOCUMENT}"
  ${EndIf}
  WriteRegStr HKLM "Software\Classes\.tbl\OpenWithProgids" "${DOCUMENT}" ""
  WriteRegStr HKLM "Software\Classes\${DOCUMENT}" "" "Tbl Document"
  WriteRegStr HKLM "Software\Classes\${DOCUMENT}\DefaultIcon" "" '"$INSTDIR\orvane.exe",0'
  WriteRegStr HKLM "Software\Classes\${DOCUMENT}\shell\open\command" "" '"$INSTDIR\orvane.exe" "%1"'
  !insertmacro RefreshShell

  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "Orvane"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" '"$INSTDIR\orvane.exe",0'
  WriteRegStr HKLM "${UNINSTALL}" "Publisher" "Orvane developers"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; Takes away what was installed and nothing else: files of the users in the folder stay.
Section Uninstall
  !insertmacro RefuseWhileRunning
  Delete "$SMPROGRAMS\Orvane.lnk"
  !include "${FILES}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"

  ReadRegStr $0 HKLM "Software\Classes\.tbl" ""
  ${If} $0 == "${DOCUMENT}"
    DeleteRegValue HKLM "Software\Classes\.tbl" ""
  ${EndIf}
  DeleteRegValue HKLM "Software\Classes\.tbl\OpenWithProgids" "${DOCUMENT}"
  DeleteRegKey /ifempty HKLM "Software\Classes\.tbl\OpenWithProgids"
  DeleteRegKey /ifempty HKLM "Software\Classes\.tbl"
  DeleteRegKey HKLM "Software\Classes\${DOCUMENT}"
  DeleteRegKey HKLM "${UNINSTALL}"
  ; What a copy that ran from a folder of its own wrote for the user.
  ReadRegStr $0 HKCU "Software\Classes\${DOCUMENT}\shell\open\command" ""
  ${If} $0 == '"$INSTDIR\orvane.exe" "%1"'
    DeleteRegKey HKCU "Software\Classes\${DOCUMENT}"
    ReadRegStr $0 HKCU "Software\Classes\.tbl" ""
    ${If} $0 == "${DOCUMENT}"
      DeleteRegValue HKCU "Software\Classes\.tbl" ""
      DeleteRegKey /ifempty HKCU "Software\Classes\.tbl"
    ${EndIf}
  ${EndIf}
  !insertmacro RefreshShell
SectionEnd
