; The installer; packaging/windows/make-installer calls makensis with VERSION, NUMBERS (four of them), FOLDER (what is installed),
; FILES (a macro eachFile that names what is in it), ICON and OUTPUT. Each file and each registry entry that is made here has its line in
; the uninstaller; what that does not know it leaves alone.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma

!define NAME "Tarvel4 Soft"
!define PROGRAM "tarvel4soft"
!define SONG "Tarvel4Soft.Song" ; the file type
!define APPLICATION "Software\Classes\Applications\${PROGRAM}.exe"
!define CAPABILITIES "Software\${NAME}\Capabilities"
!define TERMINAL_ENGLISH "${NAME} in the terminal"
!define TERMINAL_ITALIAN "${NAME} nel terminale"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE ; /AllUsers, /CurrentUser
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include FileFunc.nsh

Name "${NAME}"
OutFile "${OUTPUT}"
BrandingText "${NAME} ${VERSION}"
ManifestDPIAware true
ManifestSupportedOS Win10
AllowSkipFiles off
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING

!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION openWindow
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; the one that the system speaks; English where that is neither
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE Italian
LangString ShortcutHint ${LANG_ENGLISH} "Prepare backing tracks and the memory of a Tarvel4 player"
LangString ShortcutHint ${LANG_ITALIAN} "Prepara le basi musicali e la memoria del lettore Tarvel4"
LangString SongType ${LANG_ENGLISH} "Song"
LangString SongType ${LANG_ITALIAN} "Song"
LangString Terminal ${LANG_ENGLISH} "${TERMINAL_ENGLISH}"
LangString Terminal ${LANG_ITALIAN} "${TERMINAL_ITALIAN}"
LangString OldWindows ${LANG_ENGLISH} "${NAME} needs Windows 10 or later."
LangString OldWindows ${LANG_ITALIAN} "${NAME} richiede Windows 10 o successivo."
LangString InUse ${LANG_ENGLISH} "${NAME} is running. Close it, then try again."
LangString InUse ${LANG_ITALIAN} "${NAME} è in esecuzione. Chiudilo, poi riprova."

VIProductVersion "${NUMBERS}"
VIFileVersion "${NUMBERS}"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductName "${NAME}"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileDescription "${NAME} setup"
VIAddVersionKey /LANG=${LANG_ENGLISH} CompanyName "K-Varo"
VIAddVersionKey /LANG=${LANG_ENGLISH} LegalCopyright "K-Varo"

Function .onInit
  SetRegView 64
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "$(OldWindows)" /SD IDOK
    SetErrorLevel 3
    Quit
  ${EndIf}
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

; Not as the administrator that the installer may be: the shell starts it as the user.
Function openWindow
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\${PROGRAM}.exe"'
FunctionEnd

; Ends the run where a program is open, before anything is changed.
!macro closePrograms un
Function ${un}closeProgram
  Pop $0
  retry:
  ${If} ${FileExists} "$0"
    ClearErrors
    FileOpen $1 "$0" a
    ${If} ${Errors}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)" /SD IDCANCEL IDRETRY retry
      SetErrorLevel 4
      Quit
    ${EndIf}
    FileClose $1
  ${EndIf}
FunctionEnd
Function ${un}closePrograms
  Push "$INSTDIR\${PROGRAM}.exe"
  Call ${un}closeProgram
  Push "$INSTDIR\${PROGRAM}-cli.exe"
  Call ${un}closeProgram
FunctionEnd
!macroend
!insertmacro closePrograms ""
!insertmacro closePrograms "un."

!include "${FILES}"
!macro addFile file
  File "${FOLDER}/${file}"
!macroend
!macro removeFile file
  Delete "$INSTDIR\${file}"
!macroend

; One more program to choose under "open with": what opens the files until now stays what opens them.
!macro addType suffix
  WriteRegStr SHCTX "Software\Classes\${suffix}\OpenWithProgids" "${SONG}" ""
  WriteRegStr SHCTX "${APPLICATION}\SupportedTypes" "${suffix}" ""
  WriteRegStr SHCTX "${CAPABILITIES}\FileAssociations" "${suffix}" "${SONG}"
!macroend
!macro removeType suffix
  DeleteRegValue SHCTX "Software\Classes\${suffix}\OpenWithProgids" "${SONG}"
  DeleteRegKey /ifempty SHCTX "Software\Classes\${suffix}\OpenWithProgids"
  DeleteRegKey /ifempty SHCTX "Software\Classes\${suffix}"
!macroend
!macro eachType do
  !insertmacro ${do} .mid
  !insertmacro ${do} .kar
  !insertmacro ${do} .mp3
  !insertmacro ${do} .mf3
  !insertmacro ${do} .mf4
  !insertmacro ${do} .mf5
!macroend
!macro tellTypesChanged
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section
  Call closePrograms
  SetOutPath "$INSTDIR"
  !insertmacro eachFile addFile
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\${NAME}"
  StrCpy $OUTDIR "%USERPROFILE%" ; where the log goes
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\${PROGRAM}.exe" "" "$INSTDIR\${PROGRAM}.exe" 0 SW_SHOWNORMAL "" "$(ShortcutHint)"
  CreateShortcut "$SMPROGRAMS\${NAME}\$(Terminal).lnk" "$SYSDIR\cmd.exe" '/k set "PATH=$INSTDIR;%PATH%" && ${PROGRAM}-cli --help' \
    "$INSTDIR\${PROGRAM}-cli.exe" 0
  SetOutPath "$INSTDIR"

  WriteRegStr SHCTX "Software\Classes\${SONG}" "" "$(SongType)"
  WriteRegStr SHCTX "Software\Classes\${SONG}\DefaultIcon" "" "$INSTDIR\${PROGRAM}.exe,0"
  WriteRegStr SHCTX "Software\Classes\${SONG}\shell\open" "MultiSelectModel" "Single"
  WriteRegStr SHCTX "Software\Classes\${SONG}\shell\open\command" "" '"$INSTDIR\${PROGRAM}.exe" -- "%1"'
  WriteRegStr SHCTX "${APPLICATION}" "FriendlyAppName" "${NAME}"
  WriteRegStr SHCTX "${APPLICATION}\shell\open\command" "" '"$INSTDIR\${PROGRAM}.exe" -- "%1"'
  WriteRegStr SHCTX "${CAPABILITIES}" "ApplicationName" "${NAME}"
  WriteRegStr SHCTX "${CAPABILITIES}" "ApplicationDescription" "$(ShortcutHint)"
  WriteRegStr SHCTX "Software\RegisteredApplications" "${NAME}" "${CAPABILITIES}"
  !insertmacro eachType addType
  !insertmacro tellTypesChanged

  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\${PROGRAM}.exe"
  WriteRegStr SHCTX "${UNINSTALL}" "Publisher" "K-Varo"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section Uninstall
  Call un.closePrograms
  !insertmacro eachFile removeFile
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP" ; a folder that is the current one stays
  RMDir "$INSTDIR"

  Delete "$SMPROGRAMS\${NAME}\${NAME}.lnk"
  Delete "$SMPROGRAMS\${NAME}\${TERMINAL_ENGLISH}.lnk" ; the system may have been told to speak another language since
  Delete "$SMPROGRAMS\${NAME}\${TERMINAL_ITALIAN}.lnk"
  RMDir "$SMPROGRAMS\${NAME}"

  !insertmacro eachType removeType
  DeleteRegKey SHCTX "Software\Classes\${SONG}"
  DeleteRegKey SHCTX "${APPLICATION}"
  DeleteRegKey SHCTX "Software\${NAME}"
  DeleteRegValue SHCTX "Software\RegisteredApplications" "${NAME}"
  !insertmacro tellTypesChanged
  DeleteRegKey SHCTX "${UNINSTALL}"

  ; what others use as well, where nobody does
  RMDir "$LOCALAPPDATA\Programs"
  DeleteRegKey /ifempty SHCTX "Software\Classes\Applications"
  DeleteRegKey /ifempty SHCTX "Software\RegisteredApplications"
  ${If} $MultiUser.InstallMode == CurrentUser ; Windows itself makes the other
    DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
  ${EndIf}
SectionEnd
