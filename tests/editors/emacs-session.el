;; Prints what a user of Emacs sees of the language server, by way of eglot.  -*- lexical-binding: t -*-
(require 'eglot)
(require 'imenu)

(defun say (format &rest arguments)
  (princ (concat (apply #'format format arguments) "\n")))

(setq eglot-sync-connect 10
      eglot-confirm-server-initiated-edits nil)
(find-file (getenv "FILE"))
(let ((project-find-functions (list (lambda (directory) (cons 'transient directory)))))
  (apply #'eglot (eglot--guess-contact)))

(defun codes ()
  (mapcar (lambda (diagnostic)
            (plist-get (alist-get 'eglot-lsp-diag (flymake-diagnostic-data diagnostic)) :code))
          (flymake-diagnostics)))

(flymake-start)
(let ((tries 0))
  (while (and (null (codes)) (< (setq tries (1+ tries)) 100)) (accept-process-output nil 0.1)))
(say "diagnostics: %s" (mapconcat #'identity (codes) ", "))

;; What has changed is told when Emacs is idle, which it never is here.
(defun ask (method &rest parameters)
  (eglot--signal-textDocument/didChange)
  (jsonrpc-request (eglot-current-server) method parameters))

(let* ((actions (ask
                 :textDocument/codeAction
                 :textDocument (eglot--TextDocumentIdentifier)
                 :range (list :start (eglot--pos-to-lsp-position (point-min))
                              :end (eglot--pos-to-lsp-position (point-max)))
                 :context '(:diagnostics [] :only ["source.fixAll"]))))
  (eglot--apply-workspace-edit (plist-get (aref actions 0) :edit)))
(eglot-format-buffer)
(goto-char (point-min))
(search-forward "Ga")
(eglot--signal-textDocument/didChange)
(eglot-rename "Level")
(princ (buffer-string))

(goto-char (point-min))
(search-forward "Level")
(let ((hover (apply #'ask :textDocument/hover (eglot--TextDocumentPositionParams))))
  (say "hover: %s" (car (split-string (plist-get (plist-get hover :contents) :value) "\n"))))
(defun names (symbols)
  (mapcan (lambda (symbol)
            (cons (plist-get symbol :name) (names (plist-get symbol :children))))
          symbols))
(let ((symbols (ask :textDocument/documentSymbol :textDocument (eglot--TextDocumentIdentifier))))
  (say "symbols: %s" (mapconcat #'identity (names symbols) ", ")))
(set-buffer-modified-p nil)
(eglot-shutdown (eglot-current-server))
