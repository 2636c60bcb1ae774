; The installer: for the user alone, without an administrator. Defined by build.sh:
; VERSION, FOLDER (what is installed) and OUTPUT.
Target amd64-unicode ; as the program is
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh

!define NAME "Vantrel Data Acquisition"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vantrel"
!define TYPE "Vantrel.Measurement"
!define CLASSES "Software\Classes"

Name "${NAME}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Vantrel"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "FileDescription" "${NAME}, installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "GPL-3.0-or-later"

!define MUI_ICON "${FOLDER}\..\vantrel.ico"
!define MUI_UNICON "${FOLDER}\..\vantrel.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\vantrel.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${FOLDER}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro TELL_SHELL
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

!macro FILE_TYPE ENDING
  WriteRegStr HKCU "${CLASSES}\${ENDING}" "" "${TYPE}"
  WriteRegStr HKCU "${CLASSES}\${ENDING}\OpenWithProgids" "${TYPE}" ""
!macroend

; Another program may have taken the ending since: its choice stays.
!macro UN_FILE_TYPE ENDING
  DeleteRegValue HKCU "${CLASSES}\${ENDING}\OpenWithProgids" "${TYPE}"
  DeleteRegKey /ifempty HKCU "${CLASSES}\${ENDING}\OpenWithProgids"
  ReadRegStr $0 HKCU "${CLASSES}\${ENDING}" ""
  ${If} $0 == "${TYPE}"
    DeleteRegValue HKCU "${CLASSES}\${ENDING}" ""
  ${EndIf}
  DeleteRegKey /ifempty HKCU "${CLASSES}\${ENDING}"
!macroend

Section
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Vantrel"
  CreateShortcut "$SMPROGRAMS\Vantrel\${NAME}.lnk" "$INSTDIR\vantrel.exe"
  CreateShortcut "$SMPROGRAMS\Vantrel\Uninstall.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "${CLASSES}\${TYPE}" "" "Ion measurement"
  WriteRegStr HKCU "${CLASSES}\${TYPE}\DefaultIcon" "" "$INSTDIR\vantrel.exe,0"
  WriteRegStr HKCU "${CLASSES}\${TYPE}\shell\open\command" "" '"$INSTDIR\vantrel.exe" "%1"'
  !insertmacro FILE_TYPE ".4ch"
  !insertmacro FILE_TYPE ".8ch"

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "${NAME}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\vantrel.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Vantrel"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  !insertmacro TELL_SHELL
SectionEnd

; Settings and measurement files are the user's and stay.
Section "Uninstall"
  !include "${FILE_LIST}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Vantrel\${NAME}.lnk"
  Delete "$SMPROGRAMS\Vantrel\Uninstall.lnk"
  RMDir "$SMPROGRAMS\Vantrel"
  !insertmacro UN_FILE_TYPE ".4ch"
  !insertmacro UN_FILE_TYPE ".8ch"
  DeleteRegKey HKCU "${CLASSES}\${TYPE}"
  DeleteRegKey HKCU "${UNINSTALL}"
  !insertmacro TELL_SHELL
SectionEnd
